#ifndef XMLDOM_TESTS_HARNESS_LISTS_H
#define XMLDOM_TESTS_HARNESS_LISTS_H

#include <xmldom/xmldom.h>

#include <string>

#include "harness/Trees.h"

typedef Ref<IXMLDOMNodeList> List;
typedef Ref<IXMLDOMNamedNodeMap> Map;

/// A list whose iteration can be begun again, as a derived class may do it.
struct RestartedList : IXMLDOMNodeList {
  using IXMLDOMNodeList::ResetCursor;
};

/// A new list of the children of a node.
inline List ChildrenOf(IXMLDOMNode* node) {
  List list;
  node->get_childNodes(list.Out());
  return list;
}

/// A new map of the attributes of a node.
inline Map AttributesOf(IXMLDOMNode* node) {
  Map map;
  node->get_attributes(map.Out());
  return map;
}

/// Takes a node over: its name, or "(null)" for null.
inline std::string TakeName(IXMLDOMNode* node) {
  Node taken(node);
  return node == nullptr ? "(null)" : Text(node->m_pszNodeName);
}

#endif
