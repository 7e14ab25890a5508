#include <xmldom/query/XPathStep.h>

#include <xmldom/query/XPathList.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace xmldom {

namespace {

/// Cuts the segment at the front of `text` and moves `text` behind the '/' that ends it.
/// Result: whether there was such a '/'.
bool CutSegment(TextRange* text, XPathSegment* segment) {
  segment->isAttribute = text->StartsWith('@');
  const char* begin = segment->isAttribute ? text->begin + 1 : text->begin;
  bool insideSingle = false;
  bool insideDouble = false;
  const char* p = begin;
  for (; p != text->end; ++p) {
    if (*p == '\'') {
      insideSingle = !insideSingle;
    } else if (*p == '"') {
      insideDouble = !insideDouble;
    } else if (*p == '/' && !insideSingle && !insideDouble) {
      break;
    }
  }
  segment->text = TextRange{begin, p};
  segment->anyName = segment->text.StartsWith('*');
  if (p == text->end) return false;
  text->begin = p + 1;
  return true;
}

const char* Find(const TextRange& text, char c) {
  return static_cast<const char*>(std::memchr(text.begin, c, text.Length()));
}

XPathTest SplitTest(const TextRange& text) {
  XPathTest test = {XPathTest::HOLDS_NEVER, {nullptr, nullptr}, {nullptr, nullptr}};
  const char* equals = Find(text, '=');
  if (equals == nullptr) return test;
  test.name = TextRange{text.begin, equals};
  test.wanted = TextRange{equals + 1, text.end};
  if (!test.wanted.StartsWith('\'') && !test.wanted.StartsWith('"')) {
    test.kind = XPathTest::NUMBER;
    return test;
  }
  // What follows the closing quote is ignored.
  const char quote = *test.wanted.begin++;
  const char* end = Find(test.wanted, quote);
  test.kind = end == nullptr ? XPathTest::OPEN_LITERAL : XPathTest::LITERAL;
  if (end != nullptr) test.wanted.end = end;
  return test;
}

}  // namespace

TextRange WholeText(const char* text) { return TextRange{text, text + std::strlen(text)}; }

TextRange NameOfStep(const char* text, const char** predicates) {
  *predicates = std::strchr(text, '[');
  return *predicates == nullptr ? WholeText(text) : TextRange{text, *predicates};
}

XPathPredicate::XPathPredicate(const TextRange& text) : m_count(1) {
  TextRange rest = text;
  if (CutSegment(&rest, &m_first)) {
    m_rest.reset(
        new XPathSegment[static_cast<std::size_t>(std::count(rest.begin, rest.end, '/')) + 1]);
    bool more = true;
    for (; more; ++m_count) more = CutSegment(&rest, &m_rest[m_count - 1]);
  }
  m_test = SplitTest(At(m_count - 1).text);
}

XPathStep::XPathStep()
    : m_text(nullptr),
      m_name{nullptr, nullptr},
      m_anyName(false),
      m_hasPredicates(false),
      m_predicates(nullptr),
      m_end(COMPLETE),
      m_wrongCharacter('\0') {}

// Complete before it splits anything, so that its destructor frees what there is when memory is
// out.
XPathStep::XPathStep(const char* text) : XPathStep() {
  if (text == nullptr) return;
  m_text = text;
  const char* predicates = nullptr;
  m_name = NameOfStep(text, &predicates);
  m_anyName = m_name.Length() == 1 && m_name.StartsWith('*');
  m_hasPredicates = predicates != nullptr;
  if (m_hasPredicates) SplitPredicates(predicates);
}

XPathStep::~XPathStep() {
  while (m_predicates != nullptr) {
    LinkedPredicate* linked = m_predicates;
    m_predicates = linked->next;
    delete linked;
  }
}

void XPathStep::SplitPredicates(const char* text) {
  LinkedPredicate** link = &m_predicates;
  for (const char* p = text;; ++p) {
    while (*p == ' ') ++p;
    if (*p == '\0') return;
    if (*p != '[') {
      m_end = WRONG_CHARACTER;
      m_wrongCharacter = *p;
      return;
    }
    const char* begin = p + 1;
    p = std::strchr(begin, ']');
    if (p == nullptr) {
      m_end = UNTERMINATED;
      return;
    }
    *link = new LinkedPredicate(TextRange{begin, p});
    link = &(*link)->next;
  }
}

XPathSteps::XPathSteps() : m_steps(nullptr), m_count(0), m_none(nullptr), m_hasDots(false) {}

XPathSteps::XPathSteps(CXPathList& list) : XPathSteps() {
  if (list.m_ppIndex == nullptr) list.CreateIndex();
  const std::size_t count = static_cast<std::size_t>(list.m_nCount);
  m_steps = static_cast<XPathStep*>(::operator new(count * sizeof(XPathStep)));
  for (; m_count < list.m_nCount; ++m_count) {
    new (m_steps + m_count) XPathStep(list.m_ppIndex[m_count]);
    m_hasDots = m_hasDots || m_steps[m_count].HasDots();
  }
}

XPathSteps::~XPathSteps() {
  while (m_count > 0) m_steps[--m_count].~XPathStep();
  ::operator delete(m_steps);
}

}  // namespace xmldom
