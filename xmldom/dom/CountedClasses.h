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

/// Refuses to delete what is counted.
template <>
struct default_delete<CRefCountedObject> {
  /// Does not exist.
  void operator()(CRefCountedObject* p) const = delete;
};
/// Refuses to delete what is counted.
template <>
struct default_delete<IXMLDOMDocument2> {
  /// Does not exist.
  void operator()(IXMLDOMDocument2* p) const = delete;
};
/// Refuses to delete what is counted.
template <>
struct default_delete<IXMLDOMNamedNodeMap> {
  /// Does not exist.
  void operator()(IXMLDOMNamedNodeMap* p) const = delete;
};
/// Refuses to delete what is counted.
template <>
struct default_delete<IXMLDOMNode> {
  /// Does not exist.
  void operator()(IXMLDOMNode* p) const = delete;
};
/// Refuses to delete what is counted.
template <>
struct default_delete<IXMLDOMNodeList> {
  /// Does not exist.
  void operator()(IXMLDOMNodeList* p) const = delete;
};
/// Refuses to delete what is counted.
template <>
struct default_delete<IXMLDOMParseError> {
  /// Does not exist.
  void operator()(IXMLDOMParseError* p) const = delete;
};

}  // namespace std

#endif
