// Testing a node with a step of a path: its name, then each predicate. The nodes that a predicate
// leads to, its candidates, are found by a walk that goes down one level for each segment.
// Tested by tests/query/NodeMatch_test.cpp and tests/query/NodeMatchOutput_test.cpp.

#include <xmldom/query/NodeMatch.h>

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using xmldom::TextRange;
using xmldom::XPathSegment;
using xmldom::XPathSegments;
using xmldom::XPathStep;
using xmldom::XPathSteps;

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

/// The value that a test compares: the decoded text of an element, the stored value of an
/// attribute.
class CandidateValue {
 public:
  explicit CandidateValue(IXMLDOMNode* candidate) : m_text(nullptr), m_owned(nullptr, std::free) {
    if (candidate->m_eNodeType == NODE_ATTRIBUTE) {
      m_text = xmldom::StoredValueOf(candidate);
    } else if (!BorrowsPlainText(candidate)) {
      m_owned.reset(candidate->GetTextAsStr());
      m_text = m_owned.get();
    }
  }

  /// Borrowed; null when the candidate has no value.
  const char* Text() const { return m_text; }

 private:
  /// Borrows the stored text of an element that has one text child without a reference, since
  /// collecting its text would only copy it. An element without children has no text. Result: false
  /// for all other elements.
  bool BorrowsPlainText(const IXMLDOMNode* element) {
    const IXMLDOMNode* child = element->m_pFirstChild;
    if (child == nullptr) return true;
    if (child->m_eNodeType != NODE_TEXT || child->m_pNextSibling != nullptr) return false;
    const char* text = xmldom::StoredValueOf(child);
    if (text != nullptr && std::strchr(text, '&') != nullptr) return false;
    if (text != nullptr && *text != '\0') m_text = text;
    return true;
  }

  const char* m_text;
  std::unique_ptr<char, void (*)(void*)> m_owned;
};

/// Compares as integers, as strtol reads them.
bool EqualsNumber(const char* value, const char* number) {
  return value != nullptr && std::strtol(value, nullptr, 10) == std::strtol(number, nullptr, 10);
}

bool EqualsLiteral(const char* value, const TextRange& literal) {
  return value == nullptr ? literal.Length() == 0 : xmldom::Equals(value, literal);
}

bool Satisfies(IXMLDOMNode* candidate, const XPathSegment& test) {
  if (test.kind == XPathSegment::NEVER_TRUE) return false;
  if (!xmldom::Equals(candidate->m_pszNodeName, test.name)) return false;
  // The value is read even for a literal without closing quote: reading it can print and log.
  const CandidateValue value(candidate);
  if (test.kind == XPathSegment::NUMBER) return EqualsNumber(value.Text(), test.wanted.begin);
  return test.kind == XPathSegment::LITERAL && EqualsLiteral(value.Text(), test.wanted);
}

/// Visits the nodes that the segments of a predicate lead to: those at depth i match segment i.
/// Ends at the first that the last segment, the test, holds for.
class CandidateSearch {
 public:
  /// `predicate`: its first segment, behind which the others stand.
  explicit CandidateSearch(const XPathSegment* predicate)
      : m_predicate(predicate), m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* candidate, std::size_t i) {
    const XPathSegment& segment = m_predicate[i];
    if (candidate->m_eNodeType != (segment.isAttribute ? NODE_ATTRIBUTE : NODE_ELEMENT)) {
      return nullptr;
    }
    if (segment.kind != XPathSegment::LEADS_ON) {
      m_found = Satisfies(candidate, segment);
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
  bool m_found;
};

/// Whether a child or an attribute of the node satisfies the predicate.
bool HasSatisfying(IXMLDOMNode* node, const XPathSegment* predicate) {
  CandidateSearch search(predicate);
  xmldom::WalkChain<xmldom::SideTrail>(search.HeadOfCandidates(node, 0), search);
  return search.IsDone();
}

}  // namespace

bool xmldom::AllPredicatesHold(IXMLDOMNode* node, const XPathStep& step) {
  const XPathSegment* predicate = step.SegmentsBegin();
  while (predicate != step.SegmentsEnd()) {
    if (!HasSatisfying(node, predicate)) return false;
    while (predicate->kind == XPathSegment::LEADS_ON) ++predicate;
    ++predicate;
  }
  const char* end = step.PredicatesEnd();
  if (end == nullptr) return ReportTermination();
  return *end == '\0' || ReportCharacter(*end);
}

bool xmldom::ReportMissingStep(IXMLDOMNode* node) {
  char* name = nullptr;
  char* predicates = nullptr;
  return node->ParseXPathQuery(nullptr, &name, &predicates) != 0;
}

int StringMatchesSubString(const char* s, const char* sub, int n) {
  if (s == nullptr || sub == nullptr || n < 0) return 0;
  const std::size_t length = static_cast<std::size_t>(n);
  return std::strlen(s) == length && std::strncmp(s, sub, length) == 0;
}

int IXMLDOMNode::MatchQuery(const char* step) {
  return xmldom::MatchesStep(this, XPathSteps(step).At(0));
}

int IXMLDOMNode::MatchesSubquery(const char* predicate) {
  if (predicate == nullptr) return 0;
  XPathSegments segments;
  xmldom::AppendPredicate(xmldom::WholeText(predicate), &segments);
  return HasSatisfying(this, segments.Items());
}

int IXMLDOMNode::MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate) {
  if (candidate == nullptr || predicate == nullptr) return 0;
  XPathSegments segments;
  xmldom::AppendPredicate(xmldom::WholeText(predicate), &segments);
  CandidateSearch search(segments.Items());
  xmldom::WalkTree<xmldom::SideTrail>(candidate, search);
  return search.IsDone();
}
