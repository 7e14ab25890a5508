// Writes a document page by page, for a display that has room for two rows: which page it is stands
// in the paged element, the rows are numbered, and the last page is filled up.

#include <xmldom/xmldom.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

// The document keeps all of its rows; only what is written differs.
void PrintPages(IXMLDOMNode* users, int rowsOnPage) {
  const int rows = users->CountChildNodes();
  const int pages = (rows + rowsOnPage - 1) / rowsOnPage;
  for (int page = 1; page <= pages; ++page) {
    const int first = (page - 1) * rowsOnPage + 1;  // counted from 1
    // "/" stands for the node itself. The text belongs to the wrapper.
    _bstr_t xml = users->GetFilteredXML("/", first, rowsOnPage, page, pages, "<user name=''/>");
    std::printf("%s", static_cast<char*>(xml));
  }
}

}  // namespace

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  std::string path = DataFile("device.xml");
  short loaded = VARIANT_FALSE;
  const HRESULT result = document->load(&path[0], &loaded);
  if (result == S_OK) {
    IXMLDOMNode* users = document->SelectSingleNode("/device/users");
    if (users != nullptr) PrintPages(users, 2);
    Release(users);
  }
  Release(document);
  return result == S_OK ? 0 : 1;
}
