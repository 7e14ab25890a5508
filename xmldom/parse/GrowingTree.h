#ifndef XMLDOM_PARSE_GROWINGTREE_H
#define XMLDOM_PARSE_GROWINGTREE_H

#include <xmldom/parse/NodeStack.h>
#include <xmldom/support/MemFile.h>

#include <cstddef>
#include <string>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace xmldom {

/// The tree of a document while it is parsed.
///
/// It knows the end of every chain that can still grow, and gathers the pieces of a text before it
/// stores them, so that a load is linear whatever its shape. It keeps what it knows of each open
/// element in the stack that everybody can see. The tree is complete up to the last event but for
/// the text gathered since the last tag; Finish stores that. Effects of all members: std::bad_alloc
/// when memory is out.
class GrowingTree {
 public:
  /// For an empty document and an empty stack, both of which must outlive this.
  GrowingTree(IXMLDOMDocument2* document, CNodeStack* stack);
  ~GrowingTree();

  GrowingTree(const GrowingTree&) = delete;
  GrowingTree& operator=(const GrowingTree&) = delete;

  bool HasOpenElement() const { return m_stack->m_pTop != nullptr; }

  /// Opens an element below the innermost open one. Of `attributes` (name, value, name, value, ...,
  /// null) no two may have the same name.
  void StartElement(const char* name, const char** attributes);

  /// Closes the innermost open element; there must be one.
  void EndElement();

  /// Appends to the text of the innermost open element; there must be one.
  void AppendText(const char* text, std::size_t length) { m_text.append(text, length); }

  /// Stores what has been gathered, and cuts the texts of all open elements to their exact size.
  void Finish();

 private:
  /// All stack elements of a growing tree are of this class.
  struct OpenElement : CNodeStackElt {
    OpenElement(IXMLDOMNode* element, CNodeStackElt* below) : CNodeStackElt(element, below) {}

    IXMLDOMNode* lastChild = nullptr;
    IXMLDOMNode* text = nullptr;   // the "#Text" child
    std::size_t textLength = 0;    // of its value
    std::size_t textCapacity = 0;  // of its value, without the terminator
  };

  /// The innermost one, null when none is open.
  OpenElement* Top() const { return static_cast<OpenElement*>(m_stack->m_pTop); }

  void AddAttributes(IXMLDOMNode* element, const char** attributes);
  const char* Escaped(const char* value);
  void Link(IXMLDOMNode* node);
  void StoreText(OpenElement& element);
  void GrowText(OpenElement& element);
  static void TrimText(OpenElement& element);
  void PushOpen(IXMLDOMNode* node);
  void PopOpen();

  IXMLDOMDocument2* m_document;
  CNodeStack* m_stack;
  std::string m_text;         // of the innermost open element, since the last tag
  CMemFile m_attributeValue;  // the one being escaped
  void* m_spare;              // memory of popped stack elements, each begins with the next
};

}  // namespace xmldom

#endif
