// Shows a table page by page, as a display with two rows would, and tells a path that is wrong from
// one that finds nothing.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

const int kRows = 2;

void PrintPage(IXMLDOMNode* table, int page, int pages) {
  // "/" stands for the node itself. What is written owns its text; the last page is filled up.
  const _bstr_t xml =
      table->GetFilteredXML("/", (page - 1) * kRows + 1, kRows, page, pages, "<user/>");
  const xmldom::LoadResult written = xmldom::LoadText(static_cast<char*>(xml));
  std::printf("page %d of %d\n", page, pages);
  for (XMLPtr<IXMLDOMNode> row : xmldom::Select(written.document, "/*/*")) {
    const std::string name = xmldom::Attribute(row, "name", "-");
    std::printf("  %s %-9s %s\n", xmldom::Attribute(row, "index").c_str(), name.c_str(),
                xmldom::Attribute(row, "role", "-").c_str());
  }
}

bool PrintTable(IXMLDOMDocument2* document, const char* path) {
  if (const xmldom::PathProblem problem = xmldom::CheckPath(path, xmldom::PathUse::kSelectOne)) {
    std::printf("%s: byte %zu: %s\n", path, problem.offset, problem.reason.c_str());
    return false;
  }
  const XMLPtr<IXMLDOMNode> table = xmldom::SelectOne(document, path);
  if (table == nullptr) {
    std::printf("%s: there is none\n", path);
    return false;
  }
  const int pages = (table->CountChildNodes() + kRows - 1) / kRows;
  for (int page = 1; page <= pages; ++page) PrintPage(table.Get(), page, pages);
  return true;
}

}  // namespace

int main() {
  SetDebugEntities(false);  // nothing that is read goes to standard output by itself
  const xmldom::LoadResult loaded = xmldom::LoadFile(DataFile("device.xml"));
  if (!loaded) {
    std::fprintf(stderr, "%s\n", xmldom::OneLine(loaded.error).c_str());
    return 1;
  }
  PrintTable(loaded.document.Get(), "//users[1]");
  PrintTable(loaded.document.Get(), "//printers");
  return PrintTable(loaded.document.Get(), "/device/users") ? 0 : 1;
}
