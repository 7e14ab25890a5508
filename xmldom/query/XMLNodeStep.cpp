// ParseXPathQuery and ParseXPathSubquery: splitting the text of a step and of a predicate for
// callers, into copies that belong to them. No node is looked at. Tested by
// tests/query/XMLNodeStep_test.cpp.

#include <xmldom/base/Text.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/XPathStep.h>

#include <cstdlib>
#include <cstring>

namespace {

using xmldom::HeapText;

HeapText Copy(const xmldom::TextRange& range) {
  return HeapText(xmldom::CopyString(range.begin, range.Length()), std::free);
}

const char* EndOf(const char* text) { return text + std::strlen(text); }

/// The value behind an '='. `quoted` tells whether it stood in quotes; either kind ends it.
HeapText CopyValue(const char* text, bool* quoted) {
  *quoted = *text == '\'' || *text == '"';
  if (!*quoted) return Copy(xmldom::WholeText(text));
  ++text;
  return Copy(xmldom::TextRange{text, text + std::strcspn(text, "'\"")});
}

}  // namespace

int IXMLDOMNode::ParseXPathQuery(const char* query, char** name, char** predicates) {
  if (query == nullptr || name == nullptr || predicates == nullptr) {
    xmldom::ReportCount::Add();
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityError,
                           "IXMLDOMNode::ParseXPathQuery - called with NULL query or name");
    return 0;
  }
  *name = nullptr;
  *predicates = nullptr;
  const char* rest = nullptr;
  HeapText nameCopy = Copy(xmldom::NameOfStep(query, &rest));
  *predicates = xmldom::CopyString(rest);
  *name = nameCopy.release();
  return 1;
}

int IXMLDOMNode::ParseXPathSubquery(const char* subquery, bool* hasPath, char** elementName,
                                    char** attributeName, char** value, bool* quoted) {
  if (subquery == nullptr || hasPath == nullptr || elementName == nullptr ||
      attributeName == nullptr || value == nullptr || quoted == nullptr) {
    return 0;
  }
  *hasPath = false;
  *elementName = nullptr;
  *attributeName = nullptr;
  *value = nullptr;
  *quoted = false;

  const char* slash = std::strrchr(subquery, '/');
  *hasPath = slash != nullptr;
  const char* last = slash != nullptr ? slash + 1 : subquery;
  const bool isAttribute = *last == '@';
  // Deliberate: an element's name keeps the path in front of it.
  const char* nameBegin = isAttribute ? last + 1 : subquery;
  const char* equals = std::strchr(nameBegin, '=');
  HeapText name = Copy(xmldom::TextRange{nameBegin, equals != nullptr ? equals : EndOf(nameBegin)});
  if (equals != nullptr) *value = CopyValue(equals + 1, quoted).release();
  *(isAttribute ? attributeName : elementName) = name.release();
  return 1;
}
