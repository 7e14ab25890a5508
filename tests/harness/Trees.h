#ifndef XMLDOM_TESTS_HARNESS_TREES_H
#define XMLDOM_TESTS_HARNESS_TREES_H

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

/// An XMLPtr that takes over what it is made of and converts to the plain pointer, since most of
/// what a case calls takes one.
template <class T>
class Ref : public XMLPtr<T> {
 public:
  explicit Ref(T* p = nullptr) : XMLPtr<T>(xmldom::Adopt(p)) {}
  Ref(Ref&&) = default;
  Ref& operator=(Ref&&) = delete;

  operator T*() const { return this->Get(); }
};

typedef Ref<IXMLDOMDocument2> Document;
typedef Ref<IXMLDOMNode> Node;

/// A new, empty document.
Document NewDocument();

/// A document that holds `xml`; the case fails when it does not parse.
Document Load(const std::string& xml);

/// The root element, borrowed; null when the document is empty.
IXMLDOMNode* Root(IXMLDOMDocument2* document);

/// The node reached from `node` by child positions, counted from 0, borrowed: At(doc, {0, 2}) is
/// the third child of the root element. The case fails when there is none.
IXMLDOMNode* At(IXMLDOMNode* node, std::initializer_list<int> positions);

/// A detached element without value.
Node NewElement(IXMLDOMDocument2* owner, const char* name);

/// A reference of one's own to a borrowed node, which so outlives its tree.
Node Keep(IXMLDOMNode* node);

/// Null, unknown to the compiler: for members that test `this`.
IXMLDOMNode* NoNode();

/// `text`, `count` times: wide trees are Repeat("<a/>", n), deep ones Repeat("<a>", n).
std::string Repeat(const std::string& text, int count);

/// `depth` levels of elements named a; those above the lowest have `width` children each.
std::string Bush(int depth, int width);

/// Every byte once, from NUL on.
std::string AllBytes();

/// Takes a BSTR over: its text, or "(null)".
std::string TakeBstr(BSTR text);

/// Takes a C-heap text over: its text, or "(null)".
std::string TakeHeap(char* text);

/// A borrowed text, or "(null)".
std::string Text(const char* text);

/// The XML of a node, as GetXML gives it.
std::string XmlOf(IXMLDOMNode* node);

#endif
