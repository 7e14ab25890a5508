// Any bytes: a document that is loaded, from memory and from a file, is written, loaded again and
// compared.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

#include "fuzz/Check.h"
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
  for (IXMLDOMNode* node : fuzz::NodesOf(document.Get())) {
    VARIANT value;
    VariantInit(&value);
    FUZZ_CHECK(node->get_nodeTypedValue(&value) == S_OK);
    VariantClear(&value);
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

  if (!parsed || !fuzz::CheckRewriting(document) || HasOddBlank(document)) return;
  Document again(layout);
  FUZZ_CHECK(again.Load(fuzz::XmlOf(document.Get())));
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
