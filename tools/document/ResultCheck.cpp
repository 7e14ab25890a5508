// Parses what the library has written, in step with a walk over the tree of which it was written.
// Tested by tests/tool/ResultCheck_test.cpp.

#include <tools/document/ResultCheck.h>

#include <tools/document/DocumentOrder.h>
#include <tools/document/SourceEncoding.h>
#include <tools/io/SourceText.h>

#include <xmldom/parse/ExpatImpl.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <vector>

namespace tool {

namespace {

// The parser copies what it gets at once.
const std::size_t kPiece = 65536;

// With it, the parser lets references to entities pass that it does not know.
const char kForeignType[] = "<!DOCTYPE x SYSTEM ''>";

const char kOther[] = "would load as something else";

/// The text of a loaded element, of which there is one at most; empty without one.
const char* TextOf(const IXMLDOMNode& element) {
  const IXMLDOMNode* child = element.m_pFirstChild;
  while (child != nullptr && child->m_eNodeType != NODE_TEXT) child = child->m_pNextSibling;
  return child == nullptr || child->m_pszValue == nullptr ? "" : child->m_pszValue;
}

class ResultReader : public CExpatImpl<ResultReader> {
 public:
  ResultReader(const IXMLDOMNode& root, ResultKind kind)
      : m_root(&root), m_isMasked(kind == ResultKind::kMasked), m_problem() {
    if (!CreateParser()) throw std::bad_alloc();
    if (kind == ResultKind::kFragment) Read(kForeignType, sizeof kForeignType - 1, false);
  }
  ~ResultReader() { DestroyParser(); }

  ResultReader(const ResultReader&) = delete;
  ResultReader& operator=(const ResultReader&) = delete;

  ResultProblem Find(const char* xml, std::size_t size) {
    while (size > kPiece && Read(xml, kPiece, false)) {
      xml += kPiece;
      size -= kPiece;
    }
    if (m_problem.element == nullptr) Read(xml, size, true);
    return m_problem;
  }

  // Called by CExpatImpl. A stopped parser may still call them.

  void OnStartElement(const char* name, const char**) {
    if (m_problem.element != nullptr) return;
    const IXMLDOMNode* const element = m_open.empty() ? m_root : m_open.back().nextChild;
    if (element == nullptr || std::strcmp(name, element->m_pszNodeName) != 0) {
      Fail();
      return;
    }
    if (!m_open.empty()) m_open.back().nextChild = ElementFrom(element->m_pNextSibling);
    m_open.push_back(
        {element, ElementFrom(element->m_pFirstChild), m_isMasked ? "" : TextOf(*element)});
  }

  void OnEndElement(const char*) {
    if (m_problem.element != nullptr) return;
    OpenElement& open = m_open.back();
    SkipSpace(open.text);
    if (open.nextChild != nullptr || *open.text != '\0') {
      Fail();
    } else {
      m_open.pop_back();
    }
  }

  void OnDefault(const char* text, int length) {
    if (m_problem.element != nullptr || m_open.empty()) return;
    const char*& expected = m_open.back().text;
    for (const char* const end = text + length; text != end; ++text) {
      if (IsSpace(*text)) continue;
      SkipSpace(expected);
      if (*text != *expected) {
        Fail();
        return;
      }
      ++expected;
    }
  }

 private:
  struct OpenElement {
    const IXMLDOMNode* element;
    const IXMLDOMNode* nextChild;  // the child element that has not been met yet, or null
    const char* text;              // what has not been met yet of its text
  };

  static void SkipSpace(const char*& text) {
    while (IsSpace(*text)) ++text;
  }

  /// Result: whether more may follow.
  bool Read(const char* xml, std::size_t size, bool isLast) {
    if (Parse(xml, static_cast<int>(size), isLast)) return true;
    if (m_problem.element != nullptr) return false;
    if (GetErrorCode() == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    Report(std::string("would not load: ") + XML_ErrorString(GetErrorCode()));
    return false;
  }

  void Fail() {
    Report(kOther);
    XML_StopParser(m_p, XML_FALSE);
  }

  void Report(const std::string& reason) {
    m_problem = {m_open.empty() ? m_root : m_open.back().element, reason};
  }

  const IXMLDOMNode* const m_root;
  const bool m_isMasked;
  std::vector<OpenElement> m_open;
  ResultProblem m_problem;
};

}  // namespace

// Why what is not checked need not be. In a text in UTF-8, the parser delivers each reference,
// comment, instruction and mark of a CDATA section as one piece, which is no white space alone and
// so is stored whole. A text of the tree in which there is no "]]>" has no CDATA section, because
// the mark of its end would be there. So it is a row of such pieces and of characters between them,
// which are XML in any order as long as no "]]>" comes of them; and none of them is a tag. Around
// texts the library writes tags, whose values have "&gt;" for '>'. In other encodings the parser
// divides long pieces, whose parts can be white space, and takes names that are none in UTF-8.
bool NeedsResultCheck(const SourceEncoding& source, const char* xml, ResultKind kind) {
  if (!source.IsUtf8()) return true;
  return kind != ResultKind::kMasked && std::strstr(xml, "]]>") != nullptr;
}

ResultProblem FindResultProblem(const char* xml, const IXMLDOMNode& root, ResultKind kind) {
  return ResultReader(root, kind).Find(xml, std::strlen(xml));
}

ResultProblem CheckResult(const SourceEncoding& source, const char* xml, const IXMLDOMNode& root,
                          ResultKind kind) {
  if (!NeedsResultCheck(source, xml, kind)) return {};
  return FindResultProblem(xml, root, kind);
}

}  // namespace tool
