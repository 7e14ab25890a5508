#ifndef XMLDOM_FUZZ_TREES_H
#define XMLDOM_FUZZ_TREES_H

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>
#include <vector>

#include "harness/Balance.h"

namespace fuzz {

/// Notes all counters, and checks at its end that they are back.
class BalanceCheck {
 public:
  BalanceCheck() : m_before(Balance::Now()) {}
  ~BalanceCheck();

  BalanceCheck(const BalanceCheck&) = delete;
  BalanceCheck& operator=(const BalanceCheck&) = delete;

 private:
  const Balance m_before;
};

/// A document of its own, made by Create().
class Document {
 public:
  enum Layout { FORMATTED, AS_IT_STANDS };

  explicit Document(Layout layout = FORMATTED);

  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  IXMLDOMDocument2* operator->() const { return m_document.Get(); }
  IXMLDOMDocument2* Get() const { return m_document.Get(); }

  bool Load(const std::string& text) { return m_document->loadXML(text.c_str()) == VARIANT_TRUE; }
  Layout LayoutOf() const;

 private:
  XMLPtr<IXMLDOMDocument2> m_document;
};

std::string XmlOf(IXMLDOMNode* node);

bool Equal(IXMLDOMNode* first, IXMLDOMNode* second);

/// A node and all that hangs below it, attributes included; borrowed. Checks on the way that each
/// names its parent, and but for attributes the owner that the top node names.
std::vector<IXMLDOMNode*> NodesOf(IXMLDOMNode* top);

/// A document as writing and loading keeps it: texts stand before other children, and
/// the blanks around them do not count, since the writer puts them on lines of their own.
std::string StableForm(const Document& document);

/// Checks that what xmldom::Xml writes of a document, when it is loaded, is written and loaded as
/// the same again. Result: false when what is written cannot be loaded for a reason that lies in
/// the library's own form of a document, which drops declarations and joins pieces of text.
bool CheckRewriting(const Document& document);

}  // namespace fuzz

#endif
