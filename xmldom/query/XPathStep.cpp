// Splitting the steps of a path, in linear time. Malformed predicates are not reported here, but
// each time a node is tested with their step. Tested by tests/query/NodeMatch_test.cpp and
// tests/query/XMLNodeSelect_test.cpp.

#include <xmldom/query/XPathStep.h>

#include <xmldom/query/XPathList.h>

#include <algorithm>
#include <cstring>

namespace xmldom {

namespace {

/// Cuts the first segment off `text`, with the '/' that ends it. Result: whether there was such a
/// '/', so that another segment follows.
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
  XPathTest test = {XPathTest::NEVER_TRUE, {nullptr, nullptr}, {nullptr, nullptr}};
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

TextRange NameOfStep(const char* text, const char** predicates) {
  *predicates = std::strchr(text, '[');
  return *predicates == nullptr ? WholeText(text) : TextRange{text, *predicates};
}

XPathPredicate::XPathPredicate(const TextRange& text) {
  TextRange rest = text;
  XPathSegment segment;
  bool more = true;
  while (more) {
    more = CutSegment(&rest, &segment);
    segments.push_back(segment);
  }
  test = SplitTest(segments.back().text);
}

XPathStep::XPathStep(const char* text)
    : m_text(text),
      m_name{nullptr, nullptr},
      m_anyName(false),
      m_hasPredicates(false),
      m_end(COMPLETE),
      m_wrongCharacter('\0') {
  if (text == nullptr) return;
  const char* predicates = nullptr;
  m_name = NameOfStep(text, &predicates);
  m_anyName = m_name.Length() == 1 && m_name.StartsWith('*');
  m_hasPredicates = predicates != nullptr;
  if (m_hasPredicates) SplitPredicates(predicates);
}

void XPathStep::SplitPredicates(const char* text) {
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
    m_predicates.emplace_back(TextRange{begin, p});
  }
}

XPathSteps::XPathSteps(CXPathList& list)
    : m_count(list.m_nCount), m_missing(nullptr), m_hasDots(false) {
  if (list.m_ppIndex == nullptr) list.CreateIndex();
  m_steps.reserve(static_cast<std::size_t>(std::max(m_count, 0)));
  for (int k = 0; k < m_count; ++k) {
    m_steps.emplace_back(list.m_ppIndex[k]);
    m_hasDots = m_hasDots || m_steps.back().HasDots();
  }
}

}  // namespace xmldom
