#ifndef XMLDOM_TESTS_PLAIN_PLAINBUILDER_H
#define XMLDOM_TESTS_PLAIN_PLAINBUILDER_H

#include <expat.h>

#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace plain {

/// Builds the tree of a document from the events of a parser of its own, with the public members of
/// the node class: it searches for the text of an element at each piece of it, and for the end of a
/// chain at each node.
class Builder {
 public:
  explicit Builder(IXMLDOMDocument2* document);
  ~Builder();

  Builder(const Builder&) = delete;
  Builder& operator=(const Builder&) = delete;

  /// Empties the document and loads a text. Result: whether it parsed.
  bool Load(const std::string& text);

  /// Goes on with a piece of a text, without emptying the document.
  bool Parse(const std::string& piece, bool final);

  /// How many elements are open.
  int OpenElements() const { return static_cast<int>(m_open.size()); }

  /// What the document's parse error has to say: code, size, line, column, reason and tag.
  std::string DescribeError() const;

 private:
  static void OnStartElement(void* self, const char* name, const char** attributes);
  static void OnEndElement(void* self, const char* name);
  static void OnDefault(void* self, const char* text, int length);
  void AppendText(const char* text, int length);
  std::string ErrorTag() const;

  XML_Parser m_parser;
  IXMLDOMDocument2* m_document;
  std::vector<IXMLDOMNode*> m_open;
  bool m_isFirstElement;
};

}  // namespace plain

#endif
