#include <xmldom/support/bstr.h>

int main() {
  BSTR text = SysAllocString("text");
  const long counted = GetNumBSTRsAllocated();
  SysFreeString(text);
  return counted == 1 && GetNumBSTRsAllocated() == 0 ? 0 : 1;
}
