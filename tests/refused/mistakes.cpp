#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <memory>

// Each case is one mistake. Behind its number stands what a compiler has to complain about.

class Application : public IXMLDOMNode {};

void Mistake(IXMLDOMNode* node, XMLPtr<IXMLDOMNode> pointer) {
#if CASE == 0
  std::unique_ptr<IXMLDOMNode, XMLReleaser> unique(node);
  std::shared_ptr<IXMLDOMNode> shared(pointer.Detach(), XMLReleaser());
  node->get_nextSibling(pointer.Out());
  XMLHeapStr text = xmldom::AdoptHeapStr(node->GetTextAsStr());
#elif CASE == 1   // refused: deleted function|deleter
  std::unique_ptr<IXMLDOMNode> unique(node);
#elif CASE == 2   // refused: deleted function|deleter
  std::unique_ptr<IXMLDOMDocument2> unique(new IXMLDOMDocument2);
#elif CASE == 3   // refused: deleted function|deleter
  std::unique_ptr<IXMLDOMNodeList> unique(node->SelectNodes("a"));
#elif CASE == 4   // refused: deleted function|deleter
  std::unique_ptr<IXMLDOMNamedNodeMap> unique(new IXMLDOMNamedNodeMap);
#elif CASE == 5   // refused: deleted function|deleter
  std::unique_ptr<IXMLDOMParseError> unique(static_cast<IXMLDOMParseError*>(nullptr));
#elif CASE == 6   // refused: deleted function|deleter
  std::unique_ptr<CRefCountedObject> unique(node);
#elif CASE == 7   // refused: conversion|convert|matching
  std::unique_ptr<IXMLDOMNode> unique = std::unique_ptr<Application>(new Application);
#elif CASE == 8   // refused: conversion|convert
  XMLBstr text = xmldom::AdoptHeapStr(node->GetTextAsStr());
#elif CASE == 9   // refused: conversion|convert
  XMLHeapStr text = xmldom::AdoptBstr(node->GetTextAsBSTR());
#elif CASE == 10  // refused: Adopt
  XMLBstr text = XMLBstr::Adopt(node->GetTextAsStr());
#elif CASE == 11  // refused: deleted function|deleted constructor
  auto out = pointer.Out();
#elif CASE == 12  // refused: conversion|convert
  XMLPtr<IXMLDOMNamedNodeMap> map;
  node->get_childNodes(map.Out());
#elif CASE == 13  // refused: conversion|convert
  pointer = node;
#endif
  static_cast<void>(node);
}
