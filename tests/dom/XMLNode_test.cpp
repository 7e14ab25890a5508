#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/Allocation.h"
#include "harness/Trees.h"

namespace {

std::vector<DOMNodeType> AllTypes() {
  std::vector<DOMNodeType> types;
  for (int type = NODE_INVALID; type <= NODE_NOTATION; ++type) {
    types.push_back(static_cast<DOMNodeType>(type));
  }
  return types;
}

typedef HRESULT (IXMLDOMNode::*Getter)(IXMLDOMNode** out);

/// The names of a list's nodes, in order.
std::vector<std::string> NamesIn(const IXMLDOMNodeList* list) {
  std::vector<std::string> names;
  for (const IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr; link = link->m_pNext) {
    names.push_back(link->m_pNode->m_pszNodeName);
  }
  return names;
}

typedef std::vector<std::string> Names;

// ---- Out-pointers and `this`

TEST(XMLNode, Null_out_pointers_are_refused) {
  const struct {
    const char* name;
    HRESULT (*call)(IXMLDOMNode* node);
  } rows[] = {
      {"get_parentNode", [](IXMLDOMNode* node) { return node->get_parentNode(nullptr); }},
      {"get_firstChild", [](IXMLDOMNode* node) { return node->get_firstChild(nullptr); }},
      {"get_lastChild", [](IXMLDOMNode* node) { return node->get_lastChild(nullptr); }},
      {"get_nextSibling", [](IXMLDOMNode* node) { return node->get_nextSibling(nullptr); }},
      {"get_previousSibling", [](IXMLDOMNode* node) { return node->get_previousSibling(nullptr); }},
      {"get_nodeName", [](IXMLDOMNode* node) { return node->get_nodeName(nullptr); }},
      {"get_nodeType", [](IXMLDOMNode* node) { return node->get_nodeType(nullptr); }},
      {"hasChildNodes", [](IXMLDOMNode* node) { return node->hasChildNodes(nullptr); }},
      {"get_ownerDocument", [](IXMLDOMNode* node) { return node->get_ownerDocument(nullptr); }},
      {"get_attributes", [](IXMLDOMNode* node) { return node->get_attributes(nullptr); }},
      {"get_childNodes", [](IXMLDOMNode* node) { return node->get_childNodes(nullptr); }},
  };
  Document document = Load("<a><b/><c x='1'><d/></c></a>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(E_ARGUMENT, row.call(At(document, {0, 1})));
  }
}

// A null out-pointer does not get in first.
TEST(XMLNodeDeathTest, A_null_node_is_an_assertion) {
  const struct {
    const char* signature;
    void (*call)(IXMLDOMNode* node);
  } rows[] = {
      {"HRESULT IXMLDOMNode::get_firstChild\\(IXMLDOMNode ?\\*\\*\\)",
       [](IXMLDOMNode* node) { node->get_firstChild(nullptr); }},
      {"HRESULT IXMLDOMNode::get_nextSibling\\(IXMLDOMNode ?\\*\\*\\)",
       [](IXMLDOMNode* node) { node->get_nextSibling(nullptr); }},
      {"HRESULT IXMLDOMNode::get_nodeName\\(char ?\\*\\*\\)",
       [](IXMLDOMNode* node) { node->get_nodeName(nullptr); }},
      {"HRESULT IXMLDOMNode::get_nodeType\\(DOMNodeType ?\\*\\)",
       [](IXMLDOMNode* node) { node->get_nodeType(nullptr); }},
      {"HRESULT IXMLDOMNode::hasChildNodes\\(VARIANT_BOOL ?\\*\\) const",
       [](IXMLDOMNode* node) { node->hasChildNodes(nullptr); }},
      {"HRESULT IXMLDOMNode::get_attributes\\(IXMLDOMNamedNodeMap ?\\*\\*\\)",
       [](IXMLDOMNode* node) { node->get_attributes(nullptr); }},
      {"HRESULT IXMLDOMNode::get_childNodes\\(IXMLDOMNodeList ?\\*\\*\\)",
       [](IXMLDOMNode* node) { node->get_childNodes(nullptr); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.signature);
    EXPECT_DEATH(row.call(NoNode()), std::string("XMLNode\\.cpp:[0-9]+: ") + row.signature +
                                         ": Assertion `this' failed");
  }
}

// ---- Neighbours

TEST(XMLNode, Neighbours_are_handed_out_with_a_reference) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* root = Root(document);
  const struct {
    const char* name;
    Getter getter;
    IXMLDOMNode* of;
    IXMLDOMNode* expected;
  } rows[] = {
      {"parent", &IXMLDOMNode::get_parentNode, At(root, {1}), root},
      {"parent of the root", &IXMLDOMNode::get_parentNode, root, document},
      {"first child", &IXMLDOMNode::get_firstChild, root, At(root, {0})},
      {"last child", &IXMLDOMNode::get_lastChild, root, At(root, {2})},
      {"last child, the only one", &IXMLDOMNode::get_lastChild, document, root},
      {"next sibling", &IXMLDOMNode::get_nextSibling, At(root, {0}), At(root, {1})},
      {"previous sibling", &IXMLDOMNode::get_previousSibling, At(root, {1}), At(root, {0})},
      {"previous sibling of the last", &IXMLDOMNode::get_previousSibling, At(root, {2}),
       At(root, {1})},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const int references = row.expected->GetRefCount();
    Node found;
    EXPECT_EQ(S_OK, (row.of->*row.getter)(found.Out()));
    EXPECT_EQ(row.expected, found.Get());
    EXPECT_EQ(references + 1, row.expected->GetRefCount());
  }
}

TEST(XMLNode, A_missing_neighbour_is_null_and_the_result_1) {
  Document document = Load("<a><b/></a>");
  IXMLDOMNode* child = At(document, {0, 0});
  Node detached = NewElement(document, "detached");
  const struct {
    const char* name;
    Getter getter;
    IXMLDOMNode* of;
  } rows[] = {
      {"first child", &IXMLDOMNode::get_firstChild, child},
      {"last child", &IXMLDOMNode::get_lastChild, child},
      {"next sibling", &IXMLDOMNode::get_nextSibling, child},
      {"previous sibling of a first child", &IXMLDOMNode::get_previousSibling, child},
      {"previous sibling without parent", &IXMLDOMNode::get_previousSibling, detached},
      {"previous sibling of a document", &IXMLDOMNode::get_previousSibling, document},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    IXMLDOMNode* found = child;
    EXPECT_EQ(S_FALSE, (row.of->*row.getter)(&found));
    EXPECT_EQ(nullptr, found);
  }
}

// Deliberate: the only neighbour whose absence is no S_FALSE.
TEST(XMLNode, A_missing_parent_is_null_and_the_result_0) {
  Document document = NewDocument();
  Node detached = NewElement(document, "detached");
  for (IXMLDOMNode* node : {detached.Get(), static_cast<IXMLDOMNode*>(document)}) {
    IXMLDOMNode* parent = node;
    EXPECT_EQ(S_OK, node->get_parentNode(&parent));
    EXPECT_EQ(nullptr, parent);
  }
}

TEST(XMLNode, Attributes_have_neighbours_in_their_own_chain) {
  Document document = Load("<a x='1' y='2'/>");
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  Node next;
  EXPECT_EQ(S_OK, attribute->get_nextSibling(next.Out()));
  EXPECT_STREQ("y", next->m_pszNodeName);
  Node parent;
  EXPECT_EQ(S_OK, attribute->get_parentNode(parent.Out()));
  EXPECT_EQ(Root(document), parent.Get());
}

TEST(XMLNode, A_node_that_its_parent_does_not_list_has_no_previous_sibling_to_ask_for) {
  Document document = Load("<a x='1' y='2'><b/><c/></a>");
  Document childless = Load("<a x='1'/>");
  Node unlinked = NewElement(document, "unlinked");
  unlinked->m_pParent = Root(document);
  for (IXMLDOMNode* node :
       {Root(document)->m_pFirstAttribute, Root(document)->m_pFirstAttribute->m_pNextSibling,
        Root(childless)->m_pFirstAttribute, unlinked.Get()}) {
    SCOPED_TRACE(node->m_pszNodeName);
    IXMLDOMNode* found = node;
    try {
      node->get_previousSibling(&found);
      ADD_FAILURE() << "nothing was thrown";
    } catch (CLogException* exception) {
      EXPECT_STREQ("IXMLDOMNode::get_previousSibling", exception->GetWhere());
      EXPECT_STREQ("Call failed, no previous sibling", exception->GetMessage());
      EXPECT_EQ(nullptr, exception->GetDetail());
      delete exception;
    }
    EXPECT_EQ(node, found);
    EXPECT_EQ(1, node->GetRefCount());
  }
}

TEST(XMLNode, hasChildNodes_tells_true_as_minus_1) {
  Document document = Load("<a>text</a>");
  VARIANT_BOOL has = 7;
  EXPECT_EQ(S_OK, Root(document)->hasChildNodes(&has));
  EXPECT_EQ(-1, has);
  EXPECT_EQ(0xFFFF, static_cast<unsigned short>(has));
}

TEST(XMLNode, hasChildNodes_does_not_count_attributes) {
  Document document = Load("<a x='1'/>");
  VARIANT_BOOL has = 7;
  EXPECT_EQ(S_FALSE, Root(document)->hasChildNodes(&has));
  EXPECT_EQ(0, has);
}

// ---- The node itself

TEST(XMLNode, get_nodeName_hands_out_a_copy) {
  Document document = Load("<a x='1'>text</a>");
  const struct {
    IXMLDOMNode* node;
    const char* name;
  } rows[] = {{document, "Document Root"},
              {Root(document), "a"},
              {Root(document)->m_pFirstAttribute, "x"},
              {At(document, {0, 0}), "#Text"}};
  for (const auto& row : rows) {
    BSTR name = nullptr;
    EXPECT_EQ(S_OK, row.node->get_nodeName(&name));
    EXPECT_NE(row.node->m_pszNodeName, name);
    EXPECT_EQ(row.name, TakeBstr(name));
  }
}

TEST(XMLNode, get_nodeName_of_a_node_without_name_is_null_and_the_result_0) {
  Node node(new IXMLDOMNode);
  char before[] = "before";
  BSTR name = before;
  EXPECT_EQ(S_OK, node->get_nodeName(&name));
  EXPECT_EQ(nullptr, name);
}

TEST(XMLNode, get_nodeType_tells_what_is_stored) {
  for (DOMNodeType type : AllTypes()) {
    Node node(new IXMLDOMNode(nullptr, "name", nullptr, type));
    DOMNodeType found = static_cast<DOMNodeType>(99);
    EXPECT_EQ(S_OK, node->get_nodeType(&found));
    EXPECT_EQ(type, found);
  }
}

TEST(XMLNode, get_ownerDocument_adds_a_reference) {
  Document document = Load("<a x='1'/>");
  for (IXMLDOMNode* node :
       {static_cast<IXMLDOMNode*>(document), Root(document), Root(document)->m_pFirstAttribute}) {
    Document owner(nullptr);
    EXPECT_EQ(S_OK, node->get_ownerDocument(owner.Out()));
    EXPECT_EQ(document.Get(), owner.Get());
    EXPECT_EQ(2, document->GetRefCount());
  }
}

TEST(XMLNode, get_ownerDocument_of_a_node_without_owner_is_null_and_the_result_1) {
  Document document = NewDocument();
  Node node = NewElement(nullptr, "a");
  IXMLDOMDocument2* owner = document;
  EXPECT_EQ(S_FALSE, node->get_ownerDocument(&owner));
  EXPECT_EQ(nullptr, owner);
}

// ---- Lists

TEST(XMLNode, get_attributes_lists_them_in_order) {
  Document document = Load("<a z='1' y='2' x='3'/>");
  Ref<IXMLDOMNamedNodeMap> map;
  EXPECT_EQ(S_OK, Root(document)->get_attributes(map.Out()));
  EXPECT_EQ((Names{"z", "y", "x"}), NamesIn(map));
  EXPECT_EQ(1, map->GetRefCount());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
}

TEST(XMLNode, get_attributes_of_an_element_without_any_is_an_empty_map) {
  Document document = Load("<a>text</a>");
  Ref<IXMLDOMNamedNodeMap> map;
  EXPECT_EQ(S_OK, Root(document)->get_attributes(map.Out()));
  ASSERT_NE(nullptr, map.Get());
  EXPECT_EQ(0, map->m_nCount);
}

TEST(XMLNode, get_attributes_of_anything_but_an_element_is_null_and_the_result_1) {
  for (DOMNodeType type : AllTypes()) {
    if (type == NODE_ELEMENT) continue;
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(nullptr, "name", nullptr, type));
    node->AddAttribute("x", "1");
    Ref<IXMLDOMNamedNodeMap> other(new IXMLDOMNamedNodeMap);
    IXMLDOMNamedNodeMap* map = other;
    EXPECT_EQ(S_FALSE, node->get_attributes(&map));
    EXPECT_EQ(nullptr, map);
  }
}

TEST(XMLNode, get_childNodes_lists_children_of_every_type_in_order) {
  Document document = Load("<a x='1'>text<b/><c><d/></c></a>");
  Ref<IXMLDOMNodeList> list;
  EXPECT_EQ(S_OK, Root(document)->get_childNodes(list.Out()));
  EXPECT_EQ((Names{"#Text", "b", "c"}), NamesIn(list));
  EXPECT_EQ(1, list->GetRefCount());
  EXPECT_EQ(2, At(document, {0, 0})->GetRefCount());
}

TEST(XMLNode, get_childNodes_of_a_node_of_any_type_without_children_is_an_empty_list) {
  for (DOMNodeType type : AllTypes()) {
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(nullptr, "name", "value", type));
    Ref<IXMLDOMNodeList> list;
    EXPECT_EQ(S_OK, node->get_childNodes(list.Out()));
    ASSERT_NE(nullptr, list.Get());
    EXPECT_EQ(0, list->m_nCount);
  }
}

TEST(XMLNode, Lists_do_not_follow_the_tree) {
  Document document = Load("<a x='1'><b/></a>");
  Ref<IXMLDOMNodeList> list;
  Root(document)->get_childNodes(list.Out());
  Ref<IXMLDOMNamedNodeMap> map;
  Root(document)->get_attributes(map.Out());
  Node(Root(document)->AddChild("c", nullptr));
  Root(document)->AddAttribute("y", nullptr);
  document.Reset();
  EXPECT_EQ(Names{"b"}, NamesIn(list));
  EXPECT_EQ(Names{"x"}, NamesIn(map));
}

TEST(XMLNode, A_list_that_cannot_be_completed_is_not_handed_out) {
  // The list itself and room for its links: once for a few, and again for more.
  const int kAllocations = 3;
  Document document = Load("<a>" + Repeat("<b/>", 20) + "</a>");
  for (int i = 0; i < 20; ++i) {
    Root(document)->AddAttribute(("x" + std::to_string(i)).c_str(), "1");
  }
  bool handedOut = false;
  IXMLDOMNodeList* list = nullptr;
  EXPECT_EQ(kAllocations, CountFailingAllocations([&] {
              handedOut = handedOut || list != nullptr;
              Root(document)->get_childNodes(&list);
            }));
  Release(list);
  IXMLDOMNamedNodeMap* map = nullptr;
  EXPECT_EQ(kAllocations, CountFailingAllocations([&] {
              handedOut = handedOut || map != nullptr;
              Root(document)->get_attributes(&map);
            }));
  Release(map);
  EXPECT_FALSE(handedOut);
}

}  // namespace
