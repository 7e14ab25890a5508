// Tells what the library makes of the references in a text.
// Tested by tests/tool/LossCheck_test.cpp.

#include <tools/document/References.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace tool {

bool IsPlainReference(const char* reference, std::size_t size) {
  if (reference[1] == '#') return true;
  for (const char* predefined : {"&lt;", "&gt;", "&amp;", "&quot;", "&apos;"}) {
    if (std::strlen(predefined) == size && std::memcmp(predefined, reference, size) == 0) {
      return true;
    }
  }
  return false;
}

bool IsBreakReference(const char* reference) {
  if (reference[1] != '#') return false;
  const bool isHexadecimal = reference[2] == 'x';
  const unsigned long number =
      std::strtoul(reference + (isHexadecimal ? 3 : 2), nullptr, isHexadecimal ? 16 : 10);
  return number == '\t' || number == '\n' || number == '\r';
}

}  // namespace tool
