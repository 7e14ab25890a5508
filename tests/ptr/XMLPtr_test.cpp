#include <xmldom/ptr/XMLPtr.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "harness/Trees.h"

namespace {

typedef XMLPtr<IXMLDOMNode> NodePtr;
typedef XMLPtr<IXMLDOMDocument2> DocumentPtr;

NodePtr NewNode(const char* name) {
  return xmldom::Adopt(new IXMLDOMNode(nullptr, name, nullptr, NODE_ELEMENT));
}

DocumentPtr LoadPtr(const char* xml) { return xmldom::Adopt(Load(xml).Detach()); }

// ---- Adopting and sharing

TEST(XMLPtr, Adopt_takes_the_reference_over) {
  IXMLDOMNode* plain = new IXMLDOMNode(nullptr, "a", nullptr, NODE_ELEMENT);
  const int nodes = IXMLDOMNode::m_iObjCount;
  {
    const NodePtr node = xmldom::Adopt(plain);
    EXPECT_EQ(plain, node.Get());
    EXPECT_EQ(1, node->GetRefCount());
  }
  EXPECT_EQ(nodes - 1, IXMLDOMNode::m_iObjCount);
}

TEST(XMLPtr, Share_adds_a_reference) {
  Document document = Load("<a/>");
  {
    const NodePtr root = xmldom::Share(Root(document));
    EXPECT_EQ(2, root->GetRefCount());
  }
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(XMLPtr, nothing_is_held_of_a_null_pointer) {
  EXPECT_FALSE(NodePtr());
  EXPECT_FALSE(NodePtr(nullptr));
  EXPECT_FALSE(xmldom::Adopt(NoNode()));
  EXPECT_FALSE(xmldom::Share(NoNode()));
  const NodePtr none;
  EXPECT_EQ(nullptr, none.Get());
  EXPECT_FALSE(NodePtr(none));
}

TEST(XMLPtr, a_shared_node_outlives_its_tree) {
  NodePtr child;
  {
    const DocumentPtr document = LoadPtr("<a><b>text</b></a>");
    child = xmldom::Share(document->m_pFirstChild->m_pFirstChild);
  }
  EXPECT_EQ(1, child->GetRefCount());
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
  EXPECT_STREQ("text", child->GetStrValue());
}

TEST(XMLPtr, holds_every_kind_of_object) {
  DocumentPtr document;
  Create(document.Out());
  EXPECT_EQ(VARIANT_FALSE, document->loadXML("<a>"));
  XMLPtr<IXMLDOMParseError> error;
  EXPECT_EQ(S_OK, document->get_parseError(error.Out()));
  EXPECT_NE(0, error->m_lErrorCode);
  XMLPtr<IXMLDOMNodeList> list = xmldom::Adopt(document->SelectNodes("a"));
  EXPECT_EQ(1, list->m_nCount);
  XMLPtr<IXMLDOMNamedNodeMap> map;
  EXPECT_EQ(S_OK, document->m_pFirstChild->get_attributes(map.Out()));
  EXPECT_EQ(0, map->m_nCount);
  list = std::move(map);
  EXPECT_EQ(0, list->m_nCount);
}

// ---- Copies and moves

TEST(XMLPtr, a_copy_has_a_reference_of_its_own) {
  NodePtr first = NewNode("a");
  NodePtr second(first);
  NodePtr third;
  third = second;
  EXPECT_EQ(3, first->GetRefCount());
  first.Reset();
  second.Reset();
  EXPECT_EQ(1, third->GetRefCount());
}

TEST(XMLPtr, a_move_leaves_the_reference_alone) {
  NodePtr first = NewNode("a");
  IXMLDOMNode* const plain = first.Get();
  NodePtr second(std::move(first));
  EXPECT_FALSE(first);
  EXPECT_EQ(1, plain->GetRefCount());
  first = std::move(second);
  EXPECT_FALSE(second);
  EXPECT_EQ(plain, first.Get());
  EXPECT_EQ(1, plain->GetRefCount());
}

TEST(XMLPtr, assigning_releases_what_was_held) {
  const NodePtr first = NewNode("a");
  const NodePtr second = NewNode("b");
  NodePtr node = first;
  node = second;
  EXPECT_EQ(1, first->GetRefCount());
  EXPECT_EQ(2, second->GetRefCount());
  node = NodePtr(first);
  EXPECT_EQ(2, first->GetRefCount());
  EXPECT_EQ(1, second->GetRefCount());
  node = nullptr;
  EXPECT_EQ(1, first->GetRefCount());
}

TEST(XMLPtr, assigning_to_itself_changes_nothing) {
  NodePtr node = NewNode("a");
  NodePtr& same = node;
  node = same;
  EXPECT_EQ(1, node->GetRefCount());
  node = std::move(same);
  ASSERT_TRUE(node);
  EXPECT_EQ(1, node->GetRefCount());
  node = xmldom::Share(node.Get());
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLPtr, assigning_what_only_the_old_object_kept_alive_is_safe) {
  NodePtr node = NewNode("a");
  xmldom::Adopt(node->AddChild("b", "text"));
  node = xmldom::Share(node->m_pFirstChild);
  EXPECT_STREQ("b", node->m_pszNodeName);
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLPtr, Swap_exchanges_without_counting) {
  NodePtr first = NewNode("a");
  NodePtr second;
  first.Swap(second);
  EXPECT_FALSE(first);
  EXPECT_STREQ("a", second->m_pszNodeName);
  std::swap(first, second);
  EXPECT_STREQ("a", first->m_pszNodeName);
  first.Swap(first);
  EXPECT_EQ(1, first->GetRefCount());
}

// ---- Derived classes

TEST(XMLPtr, a_document_converts_to_a_node) {
  DocumentPtr document = LoadPtr("<a/>");
  NodePtr copy = document;
  NodePtr assigned;
  assigned = document;
  EXPECT_EQ(3, document->GetRefCount());
  EXPECT_TRUE(copy == document);
  copy = std::move(document);
  EXPECT_FALSE(document);
  EXPECT_EQ(2, copy->GetRefCount());
}

TEST(XMLPtr, the_last_pointer_to_the_base_destroys_a_document) {
  const int documents = IXMLDOMDocument2::m_iObjCount;
  {
    NodePtr node = LoadPtr("<a/>");
    EXPECT_EQ(documents + 1, IXMLDOMDocument2::m_iObjCount);
  }
  EXPECT_EQ(documents, IXMLDOMDocument2::m_iObjCount);
}

TEST(XMLPtr, converts_in_no_other_way) {
  EXPECT_TRUE((std::is_convertible<DocumentPtr, NodePtr>::value));
  EXPECT_FALSE((std::is_convertible<NodePtr, DocumentPtr>::value));
  EXPECT_FALSE((std::is_convertible<XMLPtr<IXMLDOMNodeList>, NodePtr>::value));
  EXPECT_FALSE((std::is_convertible<IXMLDOMNode*, NodePtr>::value));
  EXPECT_FALSE((std::is_convertible<NodePtr, IXMLDOMNode*>::value));
  EXPECT_FALSE((std::is_convertible<NodePtr, bool>::value));
}

TEST(XMLPtr, is_a_plain_pointer_that_never_throws) {
  EXPECT_EQ(sizeof(IXMLDOMNode*), sizeof(NodePtr));
  EXPECT_TRUE(std::is_nothrow_move_constructible<NodePtr>::value);
  EXPECT_TRUE(std::is_nothrow_move_assignable<NodePtr>::value);
  EXPECT_TRUE(std::is_nothrow_copy_constructible<NodePtr>::value);
  EXPECT_TRUE((std::is_nothrow_constructible<NodePtr, DocumentPtr>::value));
}

// ---- Handing over

TEST(XMLPtr, Detach_hands_the_reference_to_the_tree) {
  const DocumentPtr document = LoadPtr("<a/>");
  NodePtr child = NewNode("b");
  EXPECT_EQ(1, document->m_pFirstChild->AddChild(child.Detach()));
  EXPECT_FALSE(child);
  EXPECT_EQ(nullptr, child.Detach());
  EXPECT_EQ(1, document->m_pFirstChild->m_pFirstChild->GetRefCount());
}

TEST(XMLPtr, a_node_that_was_refused_stays_with_its_pointer) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  IXMLDOMNode* const root = document->m_pFirstChild;
  IXMLDOMNode* const places[] = {root, root->m_pFirstChild};  // only the second is a child
  const HRESULT results[] = {E_ARGUMENT, S_OK};
  for (int i = 0; i < 2; ++i) {
    NodePtr node = NewNode("c");
    const HRESULT result = root->insertBefore(node.Get(), places[i], nullptr);
    EXPECT_EQ(results[i], result);
    if (result == S_OK) node.Detach();
    EXPECT_EQ(i == 0, static_cast<bool>(node));
  }
  EXPECT_STREQ("c", root->m_pFirstChild->m_pszNodeName);
  EXPECT_EQ(1, root->m_pFirstChild->GetRefCount());
}

TEST(XMLPtr, a_node_moves_between_trees_beside_its_pointer) {
  const DocumentPtr from = LoadPtr("<a><b/></a>");
  const DocumentPtr to = LoadPtr("<c/>");
  const NodePtr node = xmldom::Share(from->m_pFirstChild->m_pFirstChild);
  EXPECT_EQ(S_OK, to->m_pFirstChild->appendChild(node.Get(), nullptr));
  EXPECT_EQ(2, node->GetRefCount());
  EXPECT_EQ(to.Get(), node->m_pOwnerDocument);
}

// ---- Out-pointers

TEST(XMLPtr, Out_owns_what_a_member_hands_out) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  NodePtr root;
  EXPECT_EQ(S_OK, document->get_documentElement(root.Out()));
  EXPECT_EQ(2, root->GetRefCount());
  DocumentPtr owner;
  EXPECT_EQ(S_OK, root->get_ownerDocument(owner.Out()));
  EXPECT_TRUE(owner == document);
  EXPECT_EQ(2, owner->GetRefCount());
}

TEST(XMLPtr, Out_a_second_time_releases_the_first) {
  const DocumentPtr document = LoadPtr("<a><b/><c/></a>");
  IXMLDOMNode* const root = document->m_pFirstChild;
  NodePtr child;
  EXPECT_EQ(S_OK, root->get_firstChild(child.Out()));
  EXPECT_EQ(S_OK, root->get_lastChild(child.Out()));
  EXPECT_STREQ("c", child->m_pszNodeName);
  EXPECT_EQ(1, root->m_pFirstChild->GetRefCount());
  EXPECT_EQ(S_FALSE, child->get_firstChild(child.Out()));
  EXPECT_FALSE(child);
}

TEST(XMLPtr, Out_takes_the_reference_of_a_node_that_is_taken_out) {
  const DocumentPtr document = LoadPtr("<a><b/><c/></a>");
  IXMLDOMNode* const root = document->m_pFirstChild;
  NodePtr removed;
  EXPECT_EQ(S_OK, root->removeChild(root->m_pFirstChild, removed.Out()));
  EXPECT_STREQ("b", removed->m_pszNodeName);
  EXPECT_EQ(1, removed->GetRefCount());
  NodePtr replaced;
  EXPECT_EQ(S_OK, root->replaceChild(removed.Get(), root->m_pFirstChild, replaced.Out()));
  removed.Detach();
  EXPECT_STREQ("c", replaced->m_pszNodeName);
  EXPECT_EQ(1, replaced->GetRefCount());
}

TEST(XMLPtr, Out_is_null_when_the_member_stores_nothing) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  IXMLDOMNode* const root = document->m_pFirstChild;
  NodePtr removed = xmldom::Share(root);
  EXPECT_EQ(E_ARGUMENT, root->removeChild(document.Get(), removed.Out()));
  EXPECT_FALSE(removed);
  EXPECT_EQ(1, root->GetRefCount());
}

TEST(XMLPtr, Out_replaces_the_object_that_the_call_is_made_on) {
  NodePtr node = NewNode("a");
  const XMLPtr<IXMLDOMNode> last = xmldom::Adopt(node->AddChild("b", "text"));
  const int nodes = IXMLDOMNode::m_iObjCount;
  // The only reference to the element goes with this.
  EXPECT_EQ(S_OK, node->get_firstChild(node.Out()));
  EXPECT_STREQ("b", node->m_pszNodeName);
  EXPECT_EQ(nodes - 1, IXMLDOMNode::m_iObjCount);
  EXPECT_EQ(2, node->GetRefCount());
}

TEST(XMLPtr, Out_walks_along_siblings_that_only_it_holds) {
  NodePtr node = NewNode("a");
  xmldom::Adopt(node->AddSibling("b", nullptr));
  xmldom::Adopt(node->AddSibling("c", nullptr));
  EXPECT_EQ(S_OK, node->get_nextSibling(node.Out()));
  EXPECT_STREQ("b", node->m_pszNodeName);
  std::string names;
  do {
    names += node->m_pszNodeName;
  } while (node->get_nextSibling(node.Out()) == S_OK);
  EXPECT_EQ("bc", names);
  EXPECT_FALSE(node);
}

TEST(XMLPtr, Out_replaces_another_argument_of_the_call) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  NodePtr node = xmldom::Share(document->m_pFirstChild->m_pFirstChild);
  EXPECT_EQ(S_OK, document->m_pFirstChild->removeChild(node.Get(), node.Out()));
  EXPECT_STREQ("b", node->m_pszNodeName);
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLPtr, Out_owns_the_former_object_until_the_end_of_the_expression) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  NodePtr node = xmldom::Share(document->m_pFirstChild);
  IXMLDOMNode* const former = node.Get();
  EXPECT_TRUE(node->get_firstChild(node.Out()) == S_OK && node == former);
  EXPECT_STREQ("b", node->m_pszNodeName);
}

void StoreAndThrow(IXMLDOMNode** out, IXMLDOMNode* node) {
  *out = node;
  throw std::runtime_error("after the result");
}

TEST(XMLPtr, Out_of_a_call_that_throws) {
  const DocumentPtr document = LoadPtr("<a x='1'/>");
  NodePtr node = xmldom::Share(document->m_pFirstChild);
  const NodePtr attribute = xmldom::Share(document->m_pFirstChild->m_pFirstAttribute);
  try {
    attribute->get_previousSibling(node.Out());
    ADD_FAILURE();
  } catch (CLogException* exception) {
    delete exception;
  }
  EXPECT_FALSE(node);
  EXPECT_EQ(1, document->m_pFirstChild->GetRefCount());

  IXMLDOMNode* const stored = NewNode("b").Detach();
  EXPECT_THROW(StoreAndThrow(node.Out(), stored), std::runtime_error);
  EXPECT_EQ(stored, node.Get());
}

TEST(XMLPtr, Out_fits_the_pointers_of_its_class_alone) {
  typedef XMLPtr<IXMLDOMNodeList>::OutPointer ListOut;
  EXPECT_TRUE((std::is_convertible<ListOut, IXMLDOMNodeList**>::value));
  EXPECT_FALSE((std::is_convertible<ListOut, IXMLDOMNamedNodeMap**>::value));
  EXPECT_FALSE((std::is_convertible<ListOut, CRefCountedObject**>::value));
  EXPECT_FALSE((std::is_convertible<ListOut, void**>::value));
  EXPECT_FALSE((std::is_convertible<ListOut&, IXMLDOMNodeList**>::value));
  EXPECT_FALSE(std::is_move_constructible<ListOut>::value);
}

// ---- Const objects

TEST(XMLPtr, holds_what_is_const) {
  typedef XMLPtr<const IXMLDOMNode> ConstPtr;
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  const IXMLDOMNode* const plain = document->m_pFirstChild;
  {
    ConstPtr node = xmldom::Share(plain);
    const ConstPtr copy = node;
    ConstPtr other = xmldom::Share(document->m_pFirstChild);  // from one that is not const
    EXPECT_EQ(4, plain->GetRefCount());
    EXPECT_TRUE(node == other && node == plain && copy == document->m_pFirstChild);
    EXPECT_EQ(S_OK, document->m_pFirstChild->get_firstChild(other.Out()));
    EXPECT_STREQ("b", other->m_pszNodeName);
    node = xmldom::Adopt(other.Detach());
    EXPECT_EQ(2, node->GetRefCount());
  }
  EXPECT_EQ(1, plain->GetRefCount());
  EXPECT_FALSE((std::is_convertible<ConstPtr, NodePtr>::value));
}

// ---- Comparisons

TEST(XMLPtr, equal_are_pointers_to_the_same_object) {
  const DocumentPtr document = LoadPtr("<a/>");
  const NodePtr node = document;
  const NodePtr other = xmldom::Share(document->m_pFirstChild);
  IXMLDOMNode* const plain = document.Get();
  const IXMLDOMNode* const constant = plain;
  EXPECT_TRUE(node == document && document == node);
  EXPECT_TRUE(node == plain && plain == node && node == constant);
  EXPECT_TRUE(node != other && other != plain && plain != other);
  EXPECT_FALSE(node != document || node == other || plain != node || other == plain);
}

TEST(XMLPtr, equal_to_null_is_what_holds_nothing) {
  const NodePtr none;
  const NodePtr node = NewNode("a");
  EXPECT_TRUE(none == nullptr && nullptr == none && none == NodePtr());
  EXPECT_TRUE(node != nullptr && nullptr != node && node != none);
  EXPECT_FALSE(none != nullptr || nullptr != none || node == nullptr || nullptr == node);
}

TEST(XMLPtr, a_pointer_is_a_key) {
  const NodePtr first = NewNode("a");
  const NodePtr second = NewNode("b");
  std::map<NodePtr, std::string> names;
  names[first] = "a";
  names[second] = "b";
  names[NodePtr()] = "none";
  EXPECT_EQ(3u, names.size());
  EXPECT_EQ("b", names[second]);
  EXPECT_EQ(2, first->GetRefCount());
}

TEST(XMLPtr, is_ordered_by_address) {
  const NodePtr nodes[] = {NewNode("a"), NewNode("b"), NodePtr()};
  for (const NodePtr& a : nodes) {
    for (const NodePtr& b : nodes) {
      IXMLDOMNode* const p = a.Get();
      const IXMLDOMNode* const q = b.Get();
      const std::less<const IXMLDOMNode*> less;
      EXPECT_EQ(less(p, q), a < b);
      EXPECT_EQ(less(q, p), a > b);
      EXPECT_EQ(!less(q, p), a <= b);
      EXPECT_EQ(!less(p, q), a >= b);
      EXPECT_TRUE((a < q) == (a < b) && (p < b) == (a < b));
      EXPECT_TRUE((a > q) == (a > b) && (p > b) == (a > b));
      EXPECT_TRUE((a <= q) == (a <= b) && (p <= b) == (a <= b));
      EXPECT_TRUE((a >= q) == (a >= b) && (p >= b) == (a >= b));
    }
  }
  const DocumentPtr document = LoadPtr("<a/>");
  EXPECT_EQ(document.Get() < nodes[0].Get(), document < nodes[0]);
}

TEST(XMLPtr, hashes_as_the_plain_pointer) {
  const NodePtr node = NewNode("a");
  EXPECT_EQ(std::hash<IXMLDOMNode*>()(node.Get()), std::hash<NodePtr>()(node));
  std::unordered_set<NodePtr> nodes = {node, NewNode("b"), node, NodePtr()};
  EXPECT_EQ(3u, nodes.size());
  EXPECT_EQ(1u, nodes.count(node));
}

TEST(XMLPtr, swap_is_found_by_its_arguments) {
  NodePtr first = NewNode("a");
  NodePtr second;
  swap(first, second);
  EXPECT_FALSE(first);
  EXPECT_EQ(1, second->GetRefCount());
}

// ---- Standard pointers

TEST(XMLPtr, its_releaser_is_a_deleter) {
  const int nodes = IXMLDOMNode::m_iObjCount;
  {
    const std::unique_ptr<IXMLDOMNode, XMLReleaser> unique(NewNode("a").Detach());
    const std::shared_ptr<IXMLDOMNode> shared(NewNode("b").Detach(), XMLReleaser());
    const std::unique_ptr<const IXMLDOMNode, XMLReleaser> constant(NewNode("c").Detach());
    EXPECT_EQ(nodes + 3, IXMLDOMNode::m_iObjCount);
  }
  EXPECT_EQ(nodes, IXMLDOMNode::m_iObjCount);
}

// ---- Exceptions and containers

TEST(XMLPtr, an_exception_releases_what_is_held) {
  const DocumentPtr document = LoadPtr("<a><b/></a>");
  EXPECT_THROW(
      {
        const NodePtr root = xmldom::Share(document->m_pFirstChild);
        const NodePtr copy = root;
        EXPECT_EQ(3, root->GetRefCount());
        throw std::runtime_error("in between");
      },
      std::runtime_error);
  EXPECT_EQ(1, document->m_pFirstChild->GetRefCount());
}

TEST(XMLPtr, a_growing_vector_moves_its_pointers) {
  const NodePtr node = NewNode("a");
  std::vector<NodePtr> kept;
  for (int i = 0; i < 100; ++i) kept.push_back(node);
  EXPECT_EQ(101, node->GetRefCount());
  kept.erase(kept.begin(), kept.begin() + 60);
  EXPECT_EQ(41, node->GetRefCount());
  kept.clear();
  EXPECT_EQ(1, node->GetRefCount());
}

}  // namespace
