#include "plain/PlainMatching.h"

#include <xmldom/xmldom.h>

#include <cstdlib>
#include <cstring>
#include <memory>

#include "plain/PlainText.h"

namespace plain {

namespace {

/// A text from the C heap, released also when the log throws.
struct FreeText {
  void operator()(char* text) const { std::free(text); }
};
using OwnedText = std::unique_ptr<char, FreeText>;

const char* FindSlashOutsideQuotes(const char* text) {
  bool single = false;
  bool twofold = false;
  for (; *text != '\0'; ++text) {
    if (*text == '\'') single = !single;
    if (*text == '"') twofold = !twofold;
    if (*text == '/' && !single && !twofold) return text;
  }
  return nullptr;
}

/// Compares the value of a candidate with what stands behind the '='.
int MatchValue(const char* value, const char* wanted) {
  if (*wanted != '\'' && *wanted != '"') {
    if (value == nullptr) return 0;
    return std::strtol(value, nullptr, 10) == std::strtol(wanted, nullptr, 10);
  }
  if (wanted[1] == '\0') return 0;
  const char* end = std::strchr(wanted + 1, *wanted);
  if (end == nullptr) return 0;
  const int length = static_cast<int>(end - (wanted + 1));
  if (value == nullptr) return length == 0;
  return plain::StringMatchesSubString(value, wanted + 1, length);
}

int MatchFinalTest(IXMLDOMNode* candidate, const char* test, bool isAttribute) {
  const char* equals = std::strchr(test, '=');
  if (equals == nullptr) return 0;
  const int length = static_cast<int>(equals - test);
  if (!plain::StringMatchesSubString(candidate->m_pszNodeName, test, length)) return 0;
  if (isAttribute) return MatchValue(plain::GetStrValue(candidate), equals + 1);
  const OwnedText text(plain::GetTextAsStr(candidate));
  return MatchValue(text.get(), equals + 1);
}

int MatchPredicates(IXMLDOMNode* node, char* predicates) {
  for (;;) {
    while (*predicates == ' ') ++predicates;
    if (*predicates == '\0') return 1;
    if (*predicates != '[') {
      ++Reports();
      CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
                             "IXMLDOMNode::MatchQuery - invalid query, got '%c' when expecting '['",
                             *predicates);
      return 0;
    }
    ++predicates;
    char* end = *predicates == '\0' ? nullptr : std::strchr(predicates, ']');
    if (end == nullptr) {
      ++Reports();
      CLogger::PostLogEventF(
          LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
          "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'");
      return 0;
    }
    *end = '\0';
    if (!plain::MatchesSubquery(node, predicates)) return 0;
    predicates = end + 1;
  }
}

}  // namespace

int StringMatchesSubString(const char* s, const char* sub, int n) {
  return std::strlen(s) == static_cast<std::size_t>(n) &&
         std::memcmp(s, sub, static_cast<std::size_t>(n)) == 0;
}

int ParseXPathQuery(const char* query, char** name, char** predicates) {
  if (query == nullptr || name == nullptr || predicates == nullptr) {
    ++Reports();
    CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
                           "IXMLDOMNode::ParseXPathQuery - called with NULL query or name");
    return 0;
  }
  const char* bracket = std::strchr(query, '[');
  const std::size_t length =
      bracket == nullptr ? std::strlen(query) : static_cast<std::size_t>(bracket - query);
  *name = strndup(query, length);
  *predicates = bracket == nullptr ? nullptr : strdup(bracket);
  return 1;
}

int MatchQuery(IXMLDOMNode* node, const char* step) {
  if (node->m_eNodeType != NODE_ELEMENT) return 0;
  char* namePart = nullptr;
  char* predicatePart = nullptr;
  if (!plain::ParseXPathQuery(step, &namePart, &predicatePart)) return 0;
  const OwnedText name(namePart);
  const OwnedText predicates(predicatePart);
  if (std::strcmp(name.get(), node->m_pszNodeName) != 0 && std::strcmp(name.get(), "*") != 0) {
    return 0;
  }
  return predicates == nullptr ? 1 : MatchPredicates(node, predicates.get());
}

int MatchesSubquery(IXMLDOMNode* node, const char* predicate) {
  IXMLDOMNode* candidate = *predicate == '@' ? node->m_pFirstAttribute : node->m_pFirstChild;
  for (; candidate != nullptr; candidate = candidate->m_pNextSibling) {
    if (plain::MatchSubqueryHelper(candidate, predicate)) return 1;
  }
  return 0;
}

int MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate) {
  const bool isAttribute = *predicate == '@';
  if (candidate->m_eNodeType != (isAttribute ? NODE_ATTRIBUTE : NODE_ELEMENT)) return 0;
  if (isAttribute) ++predicate;
  const char* slash = FindSlashOutsideQuotes(predicate);
  if (slash == nullptr) return MatchFinalTest(candidate, predicate, isAttribute);
  const int length = static_cast<int>(slash - predicate);
  if (*predicate != '*' &&
      !plain::StringMatchesSubString(candidate->m_pszNodeName, predicate, length)) {
    return 0;
  }
  return plain::MatchesSubquery(candidate, slash + 1);
}

}  // namespace plain
