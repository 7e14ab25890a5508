// Bytes that name the arguments of the members that write, and then a document: whatever the
// arguments are, the document stays as it is, and the ways to write the same agree.

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/Trees.h"
#include "harness/TemporaryFolder.h"

using fuzz::Document;
using fuzz::Input;

namespace {

/// The most rows that a page is filled up with, and the most levels and blanks, since the library
/// writes as many as it is told to.
const int kMostRows = 300;

const char* const kPaths[] = {"/", "a", "/a", "//b", "//b[@a='v']", "none", "a/..", ".", "["};
const char* const kTemplates[] = {"<row/>", "<row a='1'></row>", "", ">", "row", "<row", "</row>"};

/// The arguments of GetXMLHelper.
struct Arguments {
  int depth;
  int first;
  int count;
  int page;
  int pages;
  std::string padTemplate;
  bool isPadded;
  bool isMasked;
  bool isIndexed;
  bool hasPagedNode;
  bool showsAddresses;
  int index;
};

/// Any number, most often a small one.
int Number(Input& input) {
  const unsigned int choice = input.Byte();
  switch (choice) {
    case 255:
      return INT_MAX;
    case 254:
      return INT_MIN;
    case 253:
      return INT_MAX - static_cast<int>(input.Byte());
    default:
      return static_cast<int>(choice) - 20;
  }
}

Arguments ReadArguments(Input& input) {
  Arguments arguments;
  const int depth = static_cast<int>(input.Byte());
  // Most inputs have a usual one, and the others one that is negative or very deep.
  arguments.depth = depth < 224 ? depth % 8 : depth < 240 ? 223 - depth : kMostRows - depth % 8;
  arguments.first = Number(input);
  arguments.count = Number(input);
  arguments.page = Number(input);
  arguments.pages = Number(input);
  const unsigned int flags = input.Byte();
  arguments.isMasked = (flags & 1) != 0;
  arguments.isIndexed = (flags & 2) != 0;
  arguments.isPadded = (flags & 4) != 0;
  arguments.hasPagedNode = (flags & 0x30) != 0x30;
  arguments.showsAddresses = (flags & 0xC0) == 0xC0;
  arguments.index = Number(input);
  if (arguments.isPadded) {
    arguments.padTemplate = input.OneOfOrAny(kTemplates);
    if (arguments.first > kMostRows) arguments.first = kMostRows;
    if (arguments.count > kMostRows) arguments.count = kMostRows;
  }
  return arguments;
}

const char* TemplateOf(const Arguments& arguments) {
  return arguments.isPadded ? arguments.padTemplate.c_str() : nullptr;
}

/// As many rows as numbers, each in a line, and as many blanks as a number says.
void CheckRowsAndSpaces(const Arguments& arguments) {
  const int from = std::max(arguments.first, -kMostRows);
  CMemFile rows(1);
  Pad(rows, TemplateOf(arguments), from, arguments.count);
  FUZZ_CHECK(std::strlen(rows.GetAsStr()) == rows.m_uLength);
  if (!arguments.isPadded || arguments.count <= from) {
    FUZZ_CHECK(rows.m_uLength == 0);
  } else {
    const std::string row = arguments.padTemplate.c_str();
    const long inRow = std::count(row.begin(), row.end(), '\n') + 1;
    const std::string text = rows.GetAsStr();
    FUZZ_CHECK(std::count(text.begin(), text.end(), '\n') == (arguments.count - from) * inRow);
  }

  const int blanks = std::min(std::max(arguments.page, -kMostRows), kMostRows);
  CMemFile spaces(1);
  PrintSpaces(spaces, blanks);
  FUZZ_CHECK(std::string(static_cast<std::size_t>(std::abs(blanks)), ' ') == spaces.GetAsStr());
}

/// A text that is cut off fits its memory, and is the beginning of the whole one.
void CheckStringValue(IXMLDOMNode* node, int size) {
  const std::string whole = [node] {
    CMemFile text(16);
    node->GetTextHelper(text);
    return std::string(text.GetAsStr());
  }();
  char memory[40];
  std::memset(memory, '#', sizeof memory);
  const char* const result = node->GetStringValue(memory, size);
  FUZZ_CHECK(memory[size] == '#');
  FUZZ_CHECK(std::strlen(memory) < static_cast<std::size_t>(size));
  FUZZ_CHECK(whole.compare(0, std::strlen(memory), memory) == 0);
  FUZZ_CHECK(result == nullptr || result == memory);
}

/// All ways to write a node as XML give the same, and so do those to its text.
void CheckWays(IXMLDOMNode* node) {
  const std::string xml = fuzz::XmlOf(node);
  FUZZ_CHECK(xmldom::AdoptBstr(node->GetXML()).c_str() == xml);
  XMLBstr out;
  FUZZ_CHECK(node->get_xml(out.Out()) == S_OK);
  FUZZ_CHECK(out.c_str() == xml);
  FUZZ_CHECK(static_cast<const char*>(node->GetFilteredXML(nullptr, 1, 1, 1, 1, "<r/>")) == xml);

  const XMLHeapStr text = xmldom::AdoptHeapStr(node->GetTextAsStr());
  const XMLBstr textBstr = xmldom::AdoptBstr(node->GetTextAsBSTR());
  FUZZ_CHECK(std::string(text.c_str()) == textBstr.c_str());
  SetDebugEntities(false);
  const XMLHeapStr silent = xmldom::AdoptHeapStr(node->GetTextAsStr());
  SetDebugEntities(true);
  FUZZ_CHECK(std::string(silent.c_str()) == text.c_str());
}

/// What is saved is loaded as the same; where nothing can be saved, no file appears.
void CheckSaving(const Document& document, xmldom::Prolog prolog) {
  // In memory where that can be had, because saving waits for the disk.
  static const TemporaryFolder folder(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp");
  const std::string file = folder.Path("file");
  unlink(file.c_str());
  const std::error_code error = xmldom::Save(document.Get(), file, prolog);
  FUZZ_CHECK(static_cast<bool>(error) == xmldom::Xml(document.Get()).empty());
  FUZZ_CHECK((access(file.c_str(), F_OK) == 0) == !error);
  if (error) return;
  const xmldom::LoadResult loaded = xmldom::LoadText(xmldom::Xml(document.Get()));
  const xmldom::LoadResult fromFile = xmldom::LoadFile(file);
  FUZZ_CHECK(static_cast<bool>(loaded) == static_cast<bool>(fromFile));
  if (loaded) FUZZ_CHECK(fuzz::Equal(loaded.document.Get(), fromFile.document.Get()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const fuzz::BalanceCheck balance;
  Input input(data, size);
  const Arguments arguments = ReadArguments(input);
  const std::string path = input.OneOfOrAny(kPaths);
  const unsigned int paged = input.Byte();
  const int stringSize = 1 + static_cast<int>(input.Byte() % 38);
  Document document(input.Byte() % 2 == 0 ? Document::FORMATTED : Document::AS_IT_STANDS);
  document.Load(input.Rest());

  const std::vector<IXMLDOMNode*> nodes = fuzz::NodesOf(document.Get());
  const std::string before = fuzz::XmlOf(document.Get());
  IXMLDOMNode* const pagedNode = arguments.hasPagedNode ? nodes[paged % nodes.size()] : nullptr;
  SetDispAddr(arguments.showsAddresses);
  for (IXMLDOMNode* node : nodes) {
    CheckStringValue(node, stringSize);
    CMemFile xml(1);
    node->GetXMLHelper(xml, arguments.depth, pagedNode, arguments.first, arguments.count,
                       arguments.page, arguments.pages, TemplateOf(arguments), arguments.isMasked,
                       arguments.isIndexed, arguments.index);
    FUZZ_CHECK(std::strlen(xml.GetAsStr()) == xml.m_uLength);
  }
  SetDispAddr(false);
  CheckRowsAndSpaces(arguments);
  CheckWays(nodes[paged % nodes.size()]);
  document->GetMaskedXML();
  // Files cost much, so only some inputs make one.
  const bool hasProlog = paged % 2 == 0;
  if (paged >= 224) {
    CheckSaving(document, hasProlog ? xmldom::Prolog::kDeclaration : xmldom::Prolog::kNone);
  }
  // The event of a path that selects nothing keeps a string, as the header says.
  if (xmldom::Adopt(document->SelectSingleNode(path.c_str())) != nullptr) {
    document->GetFilteredXML(path.c_str(), arguments.first, arguments.count, arguments.page,
                             arguments.pages, TemplateOf(arguments));
  }
  FUZZ_CHECK(fuzz::XmlOf(document.Get()) == before);
  return 0;
}
