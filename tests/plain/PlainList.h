#ifndef XMLDOM_TESTS_PLAIN_PLAINLIST_H
#define XMLDOM_TESTS_PLAIN_PLAINLIST_H

class IXMLDOMNode;

namespace plain {

/// What IXMLDOMNodeList and IXMLDOMNamedNodeMap do, with one allocation a link and no index.
class NodeList {
 public:
  struct Link {
    IXMLDOMNode* node;
    Link* next;
  };

  NodeList();
  ~NodeList();

  NodeList(const NodeList&) = delete;
  NodeList& operator=(const NodeList&) = delete;

  int Add(IXMLDOMNode* node);
  IXMLDOMNode* NextNode();
  IXMLDOMNode* GetItem(int index);
  IXMLDOMNode* GetNamedItem(const char* name);

  Link* head;
  Link* tail;
  Link* cursor;
  int count;
  int cursorIndex;
};

}  // namespace plain

#endif
