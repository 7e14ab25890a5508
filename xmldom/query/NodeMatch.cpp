// Testing a node with a step of a path: its name, then each predicate. The nodes that a predicate
// leads to, its candidates, are found by a walk that goes down one level for each segment.
// Tested by tests/query/NodeMatch_test.cpp and tests/query/NodeMatchOutput_test.cpp.

#include <xmldom/query/NodeMatch.h>

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/TextMemory.h>

#include <cstdlib>
#include <cstring>

namespace {

using xmldom::TextRange;
using xmldom::XPathSegment;
using xmldom::XPathSegments;

/// Reports a predicate without ']'. Result: false, for the step that fails.
bool ReportTermination() {
  xmldom::ReportCount::Add();
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                         "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'");
  return false;
}

/// Reports a character that stands where a predicate would begin. Result: false.
bool ReportCharacter(char c) {
  xmldom::ReportCount::Add();
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                         "IXMLDOMNode::MatchQuery - invalid query, got '%c' when expecting '['", c);
  return false;
}

/// Compares as integers, as strtol reads them. `end` is that of the value, with a blank or a NUL
/// behind it.
bool EqualsNumber(const TextRange& value, const char* number) {
  char* end = nullptr;
  const long read = std::strtol(value.begin, &end, 10);
  // What was read from behind the value does not belong to it.
  return (end > value.end ? 0 : read) == std::strtol(number, nullptr, 10);
}

/// Compares the text of an element, which has none when it is empty.
bool HoldsForText(const XPathSegment& test, const TextRange& text) {
  const std::size_t length = text.Length();
  if (test.kind == XPathSegment::NUMBER) {
    return length != 0 && EqualsNumber(text, test.wanted.begin);
  }
  return test.kind == XPathSegment::LITERAL && length == test.wanted.Length() &&
         std::memcmp(text.begin, test.wanted.begin, length) == 0;
}

/// Compares a stored value, which may be null.
bool HoldsForValue(const XPathSegment& test, const char* value) {
  if (test.kind == XPathSegment::NUMBER) {
    return value != nullptr &&
           std::strtol(value, nullptr, 10) == std::strtol(test.wanted.begin, nullptr, 10);
  }
  if (test.kind != XPathSegment::LITERAL) return false;
  return value == nullptr ? test.wanted.Length() == 0 : xmldom::Equals(value, test.wanted);
}

/// Whether the text of an element can be compared as it is stored, because the element has no child
/// but one text without a reference. Out: that text, or null when it is empty.
bool HasPlainText(const IXMLDOMNode* element, const char** text) {
  *text = nullptr;
  const IXMLDOMNode* child = element->m_pFirstChild;
  if (child == nullptr) return true;
  if (child->m_eNodeType != NODE_TEXT || child->m_pNextSibling != nullptr) return false;
  const char* value = child->m_pszValue;
  if (value == nullptr || *value == '\0') return true;
  if (std::strchr(value, '&') != nullptr) return false;
  *text = value;
  return true;
}

bool Satisfies(IXMLDOMNode* candidate, const XPathSegment& test, const XPathSegments& segments) {
  if (test.kind == XPathSegment::NEVER_TRUE) return false;
  if (!xmldom::Equals(candidate->m_pszNodeName, test.name)) return false;
  const char* value = nullptr;
  if (candidate->m_eNodeType == NODE_ATTRIBUTE) {
    value = xmldom::StoredValueOf(candidate);
  } else if (!HasPlainText(candidate, &value)) {
    // The text is read even for a literal without closing quote: reading it can print and log.
    return HoldsForText(test, segments.Texts().TextOf(candidate));
  }
  return HoldsForValue(test, value);
}

/// Visits the nodes that the segments of a predicate lead to: those at depth i match segment i.
/// Ends at the first that the last segment, the test, holds for.
class CandidateSearch {
 public:
  /// `predicate`: its first segment among `segments`, behind which the others stand.
  CandidateSearch(const XPathSegment* predicate, const XPathSegments& segments)
      : m_predicate(predicate), m_segments(segments), m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* candidate, std::size_t i) {
    const XPathSegment& segment = m_predicate[i];
    if (candidate->m_eNodeType != (segment.isAttribute ? NODE_ATTRIBUTE : NODE_ELEMENT)) {
      return nullptr;
    }
    if (segment.kind != XPathSegment::LEADS_ON) {
      m_found = Satisfies(candidate, segment, m_segments);
      return nullptr;
    }
    if (!segment.anyName && !xmldom::Equals(candidate->m_pszNodeName, segment.name)) {
      return nullptr;
    }
    return HeadOfCandidates(candidate, i + 1);
  }

  void Leave(IXMLDOMNode*, std::size_t) {}
  bool IsDone() const { return m_found; }

  /// The first of the children or attributes of a node, whichever segment `i` names.
  IXMLDOMNode* HeadOfCandidates(IXMLDOMNode* node, std::size_t i) const {
    return m_predicate[i].isAttribute ? node->m_pFirstAttribute : node->m_pFirstChild;
  }

 private:
  const XPathSegment* const m_predicate;
  const XPathSegments& m_segments;
  bool m_found;
};

}  // namespace

bool xmldom::HasSatisfying(IXMLDOMNode* node, const XPathSegment* predicate,
                           const XPathSegments& segments) {
  CandidateSearch search(predicate, segments);
  WalkChain<SideTrail>(search.HeadOfCandidates(node, 0), search);
  return search.IsDone();
}

bool xmldom::IsSatisfying(IXMLDOMNode* candidate, const XPathSegments& segments) {
  CandidateSearch search(segments.Items(), segments);
  WalkTree<SideTrail>(candidate, search);
  return search.IsDone();
}

bool xmldom::AllPredicatesHold(IXMLDOMNode* node, const XPathStep& step) {
  const XPathSegment* predicate = step.SegmentsBegin();
  while (predicate != step.SegmentsEnd()) {
    if (!HasSatisfying(node, predicate, step.Segments())) return false;
    while (predicate->kind == XPathSegment::LEADS_ON) ++predicate;
    ++predicate;
  }
  const char* end = step.PredicatesEnd();
  if (end == nullptr) return ReportTermination();
  return *end == '\0' || ReportCharacter(*end);
}
