#ifndef XMLDOM_PARSE_GROWINGTREE_H
#define XMLDOM_PARSE_GROWINGTREE_H

#include <xmldom/parse/NodeStack.h>
#include <xmldom/support/MemFile.h>

#include <cstddef>
#include <string>

class CXMLSax;
class IXMLDOMDocument2;
class IXMLDOMNode;

namespace xmldom {

/// The tree of a document while it is being parsed.
///
/// This class remembers the last child and the text of every open element, and collects the pieces
/// of a text before it stores them. A load is therefore linear in the text, whatever the shape of
/// the tree. What it remembers is in the elements of the public stack, which it makes of a class of
/// its own. Nobody else may change the tree or the stack while this object lives. After each call
/// the tree holds all of the text that has been parsed, except what has been collected since the
/// last tag; Finish stores that. Effects of all members: std::bad_alloc when memory is out.
class GrowingTree {
 public:
  /// Begins the tree of a document that is empty, with the stack of its builder, which is empty.
  /// The builder is borrowed, and told of each default attribute. The nodes and stack elements that
  /// this makes are counted when it is gone, because an addition that other threads may make
  /// too takes long; with `countsAtOnce`, at the end of each StartElement and EndElement that did
  /// not throw.
  GrowingTree(CXMLSax* builder, bool countsAtOnce);
  ~GrowingTree();

  GrowingTree(const GrowingTree&) = delete;
  GrowingTree& operator=(const GrowingTree&) = delete;

  bool HasOpenElement() const { return m_stack->m_pTop != nullptr; }

  /// Adds an element as last child of the innermost open one, or of the document, and opens it.
  /// `attributes` is name, value, name, value, ..., null, or null; no two names may be the same.
  /// Effects: clears the error code if there are attributes, as adding one does.
  void StartElement(const char* name, const char** attributes);

  /// Closes the innermost open element; there must be one.
  void EndElement();

  /// Appends to the text of the innermost open element; there must be one. All text of an element
  /// goes into one child, which stands where the first piece of it was.
  void AppendText(const char* text, std::size_t length) { m_text.append(text, length); }

  /// Stores the text that has been collected, and gives back what memory the texts of the open
  /// elements do not need. The last call of a load, which may have ended with elements open.
  void Finish();

 private:
  /// An open element. While this object lives, all elements of the stack are of this class.
  struct OpenElement : CNodeStackElt {
    IXMLDOMNode* lastChild = nullptr;
    IXMLDOMNode* text = nullptr;   // the child that holds the text; null before there is one
    std::size_t textLength = 0;    // the length of its value
    std::size_t textCapacity = 0;  // what its value has room for, without the terminator
  };

  /// The innermost open element; null when none is open.
  OpenElement* Top() const { return static_cast<OpenElement*>(m_stack->m_pTop); }

  void AddAttributes(IXMLDOMNode* element, const char** attributes);
  const char* Escaped(const char* value);
  void Link(IXMLDOMNode* node);
  void StoreText(OpenElement& element);
  void GrowText(OpenElement& element);
  static void TrimText(OpenElement& element);
  void PushOpen(IXMLDOMNode* node);
  void PopOpen();
  void Count();

  CXMLSax* m_builder;
  IXMLDOMDocument2* m_document;
  CNodeStack* m_stack;
  std::string m_text;         // the text that has been collected since the last tag
  CMemFile m_attributeValue;  // the attribute value that is being escaped
  const bool m_countsAtOnce;
  int m_uncountedNodes;     // nodes made since they were counted last
  int m_uncountedElements;  // elements put on the stack since then, less those taken from it
  void* m_spare;  // blocks of popped stack elements, to be used again; each begins with the next
};

}  // namespace xmldom

#endif
