#include <xmldom/query/XPathStep.h>

#include <xmldom/query/XPathList.h>

#include <cstring>

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

}  // namespace

TextRange WholeText(const char* text) { return TextRange{text, text + std::strlen(text)}; }

bool Equals(const char* text, const TextRange& range) {
  if (text == nullptr) return false;
  const std::size_t length = range.Length();
  return std::strncmp(text, range.begin, length) == 0 && text[length] == '\0';
}

XPathStep SplitStep(const char* text) {
  XPathStep step = {text, {nullptr, nullptr}, nullptr, false};
  if (text == nullptr) return step;
  const char* bracket = std::strchr(text, '[');
  step.name = bracket == nullptr ? WholeText(text) : TextRange{text, bracket};
  step.predicates = bracket;
  step.anyName = step.name.Length() == 1 && step.name.StartsWith('*');
  return step;
}

XPathSteps::XPathSteps(CXPathList& list) : m_none(SplitStep(nullptr)), m_hasDots(false) {
  if (list.m_ppIndex == nullptr) list.CreateIndex();
  m_steps.reserve(static_cast<std::size_t>(list.m_nCount));
  for (int k = 0; k < list.m_nCount; ++k) {
    m_steps.push_back(SplitStep(list.m_ppIndex[k]));
    m_hasDots = m_hasDots || m_steps.back().HasDots();
  }
}

XPathPredicate::XPathPredicate(const TextRange& text) {
  TextRange rest = text;
  bool more = CutSegment(&rest, &m_first);
  while (more) {
    XPathSegment segment;
    more = CutSegment(&rest, &segment);
    m_rest.push_back(segment);
  }
}

}  // namespace xmldom
