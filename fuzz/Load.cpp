// Any bytes: a document that is loaded, from memory and from a file, is written, loaded again and
// compared.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

#include "fuzz/Check.h"
#include "fuzz/Questions.h"
#include "fuzz/Trees.h"

using fuzz::Document;

namespace {

/// A file in memory.
class MemoryFile {
 public:
  explicit MemoryFile(const std::string& bytes) : m_file(memfd_create("fuzz", 0)) {
    FUZZ_CHECK(m_file >= 0);
    FUZZ_CHECK(write(m_file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  }
  ~MemoryFile() { close(m_file); }

  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string Path() const { return "/proc/self/fd/" + std::to_string(m_file); }

 private:
  int m_file;
};

/// Asks for everything that an application asks of a loaded document, well-formed or not.
void Read(const Document& document) {
  xmldom::AdoptBstr(document->GetTextAsBSTR());
  document->GetMaskedXML();
  document->GetFilteredXML("/", 1, 2, 1, 2, "<row/>");
  fuzz::AskAll(document);
  for (IXMLDOMNode* node : fuzz::NodesOf(document.Get())) {
    CMemFile path(64);
    node->GetPathToNode(path);
  }
}

/// Whether an attribute holds a blank that the parser makes another of.
bool HasOddBlank(const Document& document) {
  for (const IXMLDOMNode* node : fuzz::NodesOf(document.Get())) {
    if (node->m_eNodeType == NODE_ATTRIBUTE && node->m_pszValue != nullptr &&
        std::strpbrk(node->m_pszValue, "\t\r\n") != nullptr) {
      return true;
    }
  }
  return false;
}

/// How many ends of CDATA sections, comments and instructions a text holds up to a NUL byte, which
/// ends it for a load. A document that has more of them than what it was loaded from has got them
/// from pieces of text that came together, which no load divides again.
std::size_t CountEnds(const std::string& text) {
  std::size_t count = 0;
  for (const char* end : {"]]>", "-->", "?>"}) {
    const char* at = text.c_str();
    for (; (at = std::strstr(at, end)) != nullptr; ++at) ++count;
  }
  return count;
}

/// The calls that give owners as results say the same.
void LoadWithOwners(const std::string& text, const Document& document, const std::string& path) {
  const xmldom::LoadResult fromText = xmldom::LoadText(text);
  const xmldom::LoadResult fromFile = xmldom::LoadFile(path);
  const bool parsed = static_cast<bool>(fromFile);
  FUZZ_CHECK(parsed != static_cast<bool>(fromFile.error) && !fromFile.error.system);
  const bool holdsNul = text.find('\0') != text.npos;
  FUZZ_CHECK(static_cast<bool>(fromText) == (parsed && !holdsNul));
  FUZZ_CHECK(static_cast<bool>(fromText) != static_cast<bool>(fromText.error));
  for (const xmldom::LoadError* error : {&fromText.error, &fromFile.error}) {
    const std::string line = xmldom::OneLine(*error, 100);
    FUZZ_CHECK(line.size() <= 100 && line.find('\n') == line.npos);
    FUZZ_CHECK(line.empty() == error->reason.empty());
  }
  if (!parsed) return;
  FUZZ_CHECK(fuzz::Equal(document.Get(), fromFile.document.Get()));
  const std::string written = fuzz::XmlOf(document.Get());
  if (HasOddBlank(document) || CountEnds(written) > CountEnds(text)) return;
  FUZZ_CHECK(xmldom::Xml(document.Get()) == written);
}

void LoadAndRewrite(const std::string& text, Document::Layout layout) {
  const fuzz::BalanceCheck balance;
  Document document(layout);
  const bool parsed = document.Load(text);
  Read(document);

  const MemoryFile file(text);
  Document fromFile(layout);
  short success = 7;
  std::string path = file.Path();
  FUZZ_CHECK(fromFile->load(&path[0], &success) == (parsed ? S_OK : S_FALSE));
  FUZZ_CHECK(success == (parsed ? VARIANT_TRUE : VARIANT_FALSE));
  FUZZ_CHECK(fuzz::Equal(document.Get(), fromFile.Get()));
  if (layout == Document::FORMATTED) LoadWithOwners(text, document, path);

  if (!parsed || !fuzz::CheckRewriting(document) || HasOddBlank(document)) return;
  const std::string written = fuzz::XmlOf(document.Get());
  if (CountEnds(written) > CountEnds(text)) return;
  Document again(layout);
  FUZZ_CHECK(again.Load(written));
  FUZZ_CHECK(fuzz::StableForm(document) == fuzz::StableForm(again));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Hush();
  const std::string text(reinterpret_cast<const char*>(data), size);
  LoadAndRewrite(text, Document::FORMATTED);
  LoadAndRewrite(text, Document::AS_IT_STANDS);
  return 0;
}
