#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/Reports.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/NodeMatch.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

using xmldom::TextRange;
using xmldom::XPathPredicate;
using xmldom::XPathSegment;
using xmldom::XPathStep;
using xmldom::XPathTest;

/// A malformed predicate makes its step fail.
bool FailAtTermination() {
  xmldom::Notices::Add();
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                         "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'");
  return false;
}

bool FailAtCharacter(char c) {
  xmldom::Notices::Add();
  CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                         "IXMLDOMNode::MatchQuery - invalid query, got '%c' when expecting '['", c);
  return false;
}

/// The value of a candidate that is compared: its decoded text, or an attribute's stored value.
class CandidateValue {
 public:
  explicit CandidateValue(IXMLDOMNode* candidate) : m_text(nullptr), m_owned(nullptr, std::free) {
    if (candidate->m_eNodeType == NODE_ATTRIBUTE) {
      m_text = xmldom::StoredValueOf(candidate);
    } else if (!IsPlain(candidate)) {
      m_owned.reset(candidate->GetTextAsStr());
      m_text = m_owned.get();
    }
  }

  /// Borrowed; null when the candidate has no value.
  const char* Text() const { return m_text; }

 private:
  /// Takes the stored text when collecting could only copy it: one piece, and no reference in it.
  bool IsPlain(const IXMLDOMNode* element) {
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

bool HoldsTest(IXMLDOMNode* candidate, const XPathTest& test) {
  if (test.kind == XPathTest::HOLDS_NEVER) return false;
  if (!xmldom::Equals(candidate->m_pszNodeName, test.name)) return false;
  const CandidateValue value(candidate);
  if (test.kind == XPathTest::NUMBER) return EqualsNumber(value.Text(), test.wanted.begin);
  return test.kind == XPathTest::LITERAL && EqualsLiteral(value.Text(), test.wanted);
}

/// Walks the candidates of a predicate, one segment a level, up to the first that satisfies it.
class PredicateSearch {
 public:
  explicit PredicateSearch(const XPathPredicate& predicate, std::size_t firstSegment)
      : m_predicate(predicate), m_firstSegment(firstSegment), m_holds(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* candidate, std::size_t depth) {
    const std::size_t i = m_firstSegment + depth;
    const XPathSegment& segment = m_predicate.At(i);
    if (candidate->m_eNodeType != (segment.isAttribute ? NODE_ATTRIBUTE : NODE_ELEMENT)) {
      return nullptr;
    }
    if (i + 1 == m_predicate.Count()) {
      m_holds = HoldsTest(candidate, m_predicate.Test());
      return nullptr;
    }
    if (!segment.anyName && !xmldom::Equals(candidate->m_pszNodeName, segment.text)) {
      return nullptr;
    }
    return m_predicate.At(i + 1).isAttribute ? candidate->m_pFirstAttribute
                                             : candidate->m_pFirstChild;
  }

  void Leave(IXMLDOMNode*, std::size_t) {}
  bool IsDone() const { return m_holds; }

 private:
  const XPathPredicate& m_predicate;
  std::size_t m_firstSegment;
  bool m_holds;
};

bool AnyHolds(IXMLDOMNode* candidates, const XPathPredicate& predicate, std::size_t firstSegment) {
  PredicateSearch search(predicate, firstSegment);
  xmldom::WalkChain<xmldom::HeapTrail>(candidates, search);
  return search.IsDone();
}

bool HoldsFor(IXMLDOMNode* node, const XPathPredicate& predicate) {
  return AnyHolds(predicate.At(0).isAttribute ? node->m_pFirstAttribute : node->m_pFirstChild,
                  predicate, 0);
}

}  // namespace

bool xmldom::HoldAllPredicates(IXMLDOMNode* node, const XPathStep& step) {
  const auto holds = [node](const XPathPredicate& predicate) { return HoldsFor(node, predicate); };
  if (!step.AllPredicates(holds)) return false;
  switch (step.PredicatesEnd()) {
    case XPathStep::WRONG_CHARACTER:
      return FailAtCharacter(step.WrongCharacter());
    case XPathStep::UNTERMINATED:
      return FailAtTermination();
    case XPathStep::COMPLETE:
      break;
  }
  return true;
}

bool xmldom::FailAtMissingStep(IXMLDOMNode* node) {
  char* name = nullptr;
  char* predicates = nullptr;
  return node->ParseXPathQuery(nullptr, &name, &predicates) != 0;
}

int StringMatchesSubString(const char* s, const char* sub, int n) {
  if (s == nullptr || sub == nullptr || n < 0) return 0;
  const std::size_t length = static_cast<std::size_t>(n);
  return std::strlen(s) == length && std::strncmp(s, sub, length) == 0;
}

int IXMLDOMNode::MatchQuery(const char* step) { return xmldom::MatchesStep(this, XPathStep(step)); }

int IXMLDOMNode::MatchesSubquery(const char* predicate) {
  return predicate != nullptr && HoldsFor(this, XPathPredicate(xmldom::WholeText(predicate)));
}

int IXMLDOMNode::MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate) {
  if (candidate == nullptr || predicate == nullptr) return 0;
  const XPathPredicate parsed(xmldom::WholeText(predicate));
  PredicateSearch search(parsed, 0);
  IXMLDOMNode* below = search.Enter(candidate, 0);
  return search.IsDone() || (below != nullptr && AnyHolds(below, parsed, 1));
}
