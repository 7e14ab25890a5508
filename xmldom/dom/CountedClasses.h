#ifndef XMLDOM_DOM_COUNTEDCLASSES_H
#define XMLDOM_DOM_COUNTEDCLASSES_H

#include <memory>

// A std::unique_ptr that deletes an object of a counted class, whoever else refers to it, does not
// compile. Use XMLPtr, or XMLReleaser as the deleter. A std::shared_ptr without a deleter cannot be
// refused in this way, nor can a std::unique_ptr to a class that an application derives.

class CRefCountedObject;
class IXMLDOMDocument2;
class IXMLDOMNamedNodeMap;
class IXMLDOMNode;
class IXMLDOMNodeList;
class IXMLDOMParseError;

namespace std {

template <>
struct default_delete<CRefCountedObject> {
  void operator()(CRefCountedObject* p) const = delete;
};
template <>
struct default_delete<IXMLDOMDocument2> {
  void operator()(IXMLDOMDocument2* p) const = delete;
};
template <>
struct default_delete<IXMLDOMNamedNodeMap> {
  void operator()(IXMLDOMNamedNodeMap* p) const = delete;
};
template <>
struct default_delete<IXMLDOMNode> {
  void operator()(IXMLDOMNode* p) const = delete;
};
template <>
struct default_delete<IXMLDOMNodeList> {
  void operator()(IXMLDOMNodeList* p) const = delete;
};
template <>
struct default_delete<IXMLDOMParseError> {
  void operator()(IXMLDOMParseError* p) const = delete;
};

}  // namespace std

#endif
