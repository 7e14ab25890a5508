// rejected FILE...: prints for each file that the library does not accept its name behind the call
// that refused it, `load` for the file or `LoadText` for its bytes.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string BytesOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

}  // namespace

int main(int count, char** paths) {
  XMLPtr<IXMLDOMDocument2> document;
  Create(document.Out());
  for (int i = 1; i < count; ++i) {
    short loaded = VARIANT_FALSE;
    const HRESULT result = document->load(paths[i], &loaded);
    if (result == E_FILENOTOPENED) {
      std::fprintf(stderr, "%s cannot be read\n", paths[i]);
      return 2;
    }
    if (result != S_OK) std::printf("load %s\n", paths[i]);
    if (!xmldom::LoadText(BytesOf(paths[i]))) std::printf("LoadText %s\n", paths[i]);
  }
  return 0;
}
