// Splitting the steps of a path, in linear time. Malformed predicates are not reported here, but
// each time a node is tested with their step. Tested by tests/query/NodeMatch_test.cpp and
// tests/query/XMLNodeSelect_test.cpp.

#include <xmldom/query/XPathStep.h>

#include <xmldom/query/TextMemory.h>
#include <xmldom/query/XPathList.h>

#include <cstring>

namespace xmldom {

namespace {

/// The first '/' of a text that stands outside quotes, or else the end of the text.
const char* EndOfSegment(const TextRange& text) {
  bool insideSingle = false;
  bool insideDouble = false;
  const char* p = text.begin;
  for (; p != text.end; ++p) {
    if (*p == '\'') {
      insideSingle = !insideSingle;
    } else if (*p == '"') {
      insideDouble = !insideDouble;
    } else if (*p == '/' && !insideSingle && !insideDouble) {
      break;
    }
  }
  return p;
}

const char* Find(const TextRange& text, char c) {
  return static_cast<const char*>(std::memchr(text.begin, c, text.Length()));
}

/// Makes the test out of the last segment of a predicate, whose name is still all of its text.
void SplitTest(XPathSegment* test) {
  test->kind = XPathSegment::NEVER_TRUE;
  const char* equals = Find(test->name, '=');
  if (equals == nullptr) return;
  TextRange& wanted = test->wanted;
  wanted = TextRange{equals + 1, test->name.end};
  test->name.end = equals;
  test->kind = XPathSegment::NUMBER;
  if (!wanted.StartsWith('\'') && !wanted.StartsWith('"')) return;
  // What follows the closing quote is ignored.
  const char quote = *wanted.begin++;
  const char* end = Find(wanted, quote);
  test->kind = end == nullptr ? XPathSegment::OPEN_LITERAL : XPathSegment::LITERAL;
  if (end != nullptr) wanted.end = end;
}

}  // namespace

XPathSegments::~XPathSegments() { delete m_texts; }

TextMemory& XPathSegments::Texts() const {
  if (m_texts == nullptr) m_texts = new TextMemory;
  return *m_texts;
}

TextRange NameOfStep(const char* text, const char** predicates) {
  *predicates = std::strchr(text, '[');
  return *predicates == nullptr ? WholeText(text) : TextRange{text, *predicates};
}

void AppendPredicate(const TextRange& text, XPathSegments* segments) {
  TextRange rest = text;
  for (;;) {
    const bool isAttribute = rest.StartsWith('@');
    if (isAttribute) ++rest.begin;
    const TextRange name = {rest.begin, EndOfSegment(rest)};
    segments->Push(XPathSegment{
        XPathSegment::LEADS_ON, isAttribute, name.StartsWith('*'), name, {nullptr, nullptr}});
    if (name.end == rest.end) break;
    rest.begin = name.end + 1;
  }
  SplitTest(&segments->Top());
}

XPathStep::XPathStep(const char* text, XPathSegments* segments)
    : m_text(text),
      m_name{nullptr, nullptr},
      m_anyName(false),
      m_hasPredicates(false),
      m_segments(segments),
      m_firstSegment(segments->Size()),
      m_endSegment(segments->Size()),
      m_predicatesEnd(nullptr) {
  if (text == nullptr) return;
  const char* predicates = nullptr;
  m_name = NameOfStep(text, &predicates);
  m_anyName = m_name.Length() == 1 && m_name.StartsWith('*');
  m_hasPredicates = predicates != nullptr;
  if (m_hasPredicates) SplitPredicates(predicates, segments);
}

void XPathStep::SplitPredicates(const char* text, XPathSegments* segments) {
  for (;;) {
    text += std::strspn(text, " ");
    if (*text != '[') break;
    const char* end = std::strchr(text, ']');
    if (end == nullptr) return;
    AppendPredicate(TextRange{text + 1, end}, segments);
    m_endSegment = segments->Size();
    text = end + 1;
  }
  m_predicatesEnd = text;
}

bool XPathStep::MayReport() const {
  if (IsMissing()) return true;
  if (!m_hasPredicates) return false;
  if (m_predicatesEnd == nullptr || *m_predicatesEnd != '\0') return true;
  for (const XPathSegment* segment = SegmentsBegin(); segment != SegmentsEnd(); ++segment) {
    if (segment->kind > XPathSegment::NEVER_TRUE && !segment->isAttribute) return true;
  }
  return false;
}

XPathSteps::XPathSteps(CXPathList& list)
    : m_count(list.m_nCount), m_missing(nullptr, &m_segments), m_hasDots(false) {
  if (list.m_ppIndex == nullptr) list.CreateIndex();
  for (int k = 0; k < m_count; ++k) Append(list.m_ppIndex[k]);
}

XPathSteps::XPathSteps(const char* step)
    : m_count(1), m_missing(nullptr, &m_segments), m_hasDots(false) {
  Append(step);
}

void XPathSteps::Append(const char* step) {
  m_steps.Push(XPathStep(step, &m_segments));
  m_hasDots = m_hasDots || m_steps.Top().HasDots();
}

}  // namespace xmldom
