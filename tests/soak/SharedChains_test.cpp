#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "harness/OwnProcess.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"
#include "plain/PlainLinks.h"
#include "soak/Cases.h"

// Chains that end in the same nodes: appendChild links a node without parent along with its
// followers, and each of these may be given another parent, where it is in a second chain. Removing
// it there cuts the first, and what happens in the one changes owners in the other. A model that
// searches each chain from its head tells what every call does.

namespace {

const int kNone = plain::Links::kNone;
const int kDocuments = 2;
const int kParents = 3;
const int kSteps = 80;
const int kMostNodes = 600;

/// Nodes of the library beside their model.
class SharedChains {
 public:
  explicit SharedChains(Random random) : m_random(random) {
    // Each case leaves out some kinds of steps altogether: as long as no step leaves neighbours
    // with different owners, insertions have a quick way.
    for (Kind kind : {ADD_CHILDREN, ADD_LONE_SIBLINGS, ADD_SIBLING, APPEND, APPEND, INSERT, REPLACE,
                      REMOVE, REMOVE, SET_OWNERS, GO_BACKWARDS, ADD_LONE_NODE}) {
      if (!m_random.OneIn(3)) m_kinds.push_back(kind);
    }
    m_kinds.push_back(APPEND);
    for (int i = 0; i < kDocuments; ++i) m_documents.push_back(NewDocument());
    for (int i = 0; i < kParents; ++i) AddLoneNode("p");
  }

  /// All links are taken away by hand, and then all nodes.
  ~SharedChains() {
    for (IXMLDOMNode* node : m_nodes) {
      node->m_pParent = node->m_pFirstChild = node->m_pNextSibling = nullptr;
    }
    for (IXMLDOMNode* node : m_nodes) {
      while (node->RealRelease() != 0) {
      }
    }
  }

  SharedChains(const SharedChains&) = delete;
  SharedChains& operator=(const SharedChains&) = delete;

  /// One call, or some. Result: what they were.
  std::string Step() {
    switch (m_kinds[static_cast<std::size_t>(m_random.Below(static_cast<int>(m_kinds.size())))]) {
      case ADD_CHILDREN:
        return AddChildren();
      case ADD_LONE_NODE:
        return std::to_string(AddLoneNode("n")) + " alone";
      case ADD_LONE_SIBLINGS:
        return AddLoneSiblings();
      case ADD_SIBLING:
        return AddSibling();
      case APPEND:
        return Append();
      case INSERT:
        return Insert();
      case REPLACE:
        return Replace();
      case REMOVE:
        return Remove();
      case SET_OWNERS:
        return SetOwners();
      default:
        return GoBackwards();
    }
  }

  /// What is not as in the model; empty when all is.
  std::string Difference() {
    const std::vector<int> links = m_links.CountLeading();
    for (int i = 0; i < static_cast<int>(m_nodes.size()); ++i) {
      const IXMLDOMNode* const node = NodeOf(i);
      const std::string name = " of node " + std::to_string(i) + "\n";
      if (node->m_pParent != NodeOf(m_links.ParentOf(i))) m_different += "the parent" + name;
      if (node->m_pNextSibling != NodeOf(m_links.NextOf(i))) m_different += "the link" + name;
      if (node->m_pFirstChild != NodeOf(m_links.FirstChildOf(i))) {
        m_different += "the first child" + name;
      }
      if (node->m_pOwnerDocument != DocumentOf(m_links.OwnerOf(i))) {
        m_different += "the owner" + name;
      }
      // The test has a reference too.
      if (node->GetRefCount() != links[static_cast<std::size_t>(i)] + 1) {
        m_different += "the references" + name;
      }
    }
    return m_different;
  }

 private:
  /// The kinds of steps.
  enum Kind {
    ADD_CHILDREN,
    ADD_LONE_NODE,
    ADD_LONE_SIBLINGS,
    ADD_SIBLING,
    APPEND,
    INSERT,
    REPLACE,
    REMOVE,
    SET_OWNERS,
    GO_BACKWARDS
  };

  IXMLDOMNode* NodeOf(int node) const {
    return node == kNone ? nullptr : m_nodes[static_cast<std::size_t>(node)];
  }

  IXMLDOMDocument2* DocumentOf(int owner) const {
    return owner == kNone ? nullptr : m_documents[static_cast<std::size_t>(owner)].Get();
  }

  /// Takes over a reference on the node of that number.
  void Keep(int number, IXMLDOMNode* node) {
    m_nodes.resize(static_cast<std::size_t>(number) + 1);
    m_nodes.back() = node;
  }

  int AddLoneNode(const char* name) {
    const int owner = AnyOwner();
    const int node = m_links.Add(owner);
    Keep(node, NewElement(DocumentOf(owner), name).Detach());
    return node;
  }

  int AnyOwner() { return m_random.OneIn(3) ? kNone : m_random.Below(kDocuments); }

  int AnyParent() {
    const int node = m_random.OneIn(4) ? AnyNode() : kNone;
    return node == kNone ? m_random.Below(kParents) : node;
  }

  /// Any node but the parents made at the start; kNone when there is none.
  int AnyNode() {
    const int count = static_cast<int>(m_nodes.size()) - kParents;
    return count == 0 ? kNone : kParents + m_random.Below(count);
  }

  /// Often the first child of a parent. kNone when it is no child.
  int AnyChild() {
    const int node = m_random.OneIn(2) ? m_links.FirstChildOf(AnyParent()) : AnyNode();
    return node == kNone || !m_links.HasParent(node) ? kNone : node;
  }

  /// Makes a call unless the model, to which `change` does the same, says that it would link a node
  /// behind itself. The call takes over a reference to each of `nodes` that it puts in place, and
  /// leaves the caller one to each that it takes out.
  template <class Change, class Call>
  std::string Do(const std::string& what, const std::vector<int>& nodes, Change change, Call call) {
    const plain::Links former = m_links;
    plain::Links changed = m_links;
    const bool isDone = change(changed);
    if (!changed.HasNoCycle()) return "nothing";
    m_links = changed;
    for (int node : nodes) {
      if (!former.HasParent(node) && changed.HasParent(node)) NodeOf(node)->AddRef();
    }
    const bool isThrown = !Thrown(call).empty();
    if (isThrown == isDone) m_different += what + (isDone ? " throws\n" : " does not throw\n");
    for (int node : nodes) {
      if (former.HasParent(node) && !changed.HasParent(node)) NodeOf(node)->RealRelease();
    }
    return what;
  }

  /// Fewer than the limit, and no more than there may be new nodes.
  int HowMany(int limit) {
    const int left = kMostNodes - static_cast<int>(m_nodes.size());
    return std::min(m_random.Below(limit), std::max(0, left));
  }

  std::string AddChildren() {
    const int above = AnyParent();
    const int count = HowMany(60);
    for (int i = 0; i < count; ++i) {
      Keep(m_links.AddChild(above), NodeOf(above)->AddChild("x", nullptr));
    }
    return std::to_string(count) + " children for " + std::to_string(above);
  }

  std::string AddLoneSiblings() {
    const int head = AddLoneNode("n");
    const int count = HowMany(m_random.OneIn(2) ? 4 : 40);
    for (int i = 0; i < count; ++i) AddSiblingTo(head);
    return std::to_string(head) + " with " + std::to_string(count) + " siblings";
  }

  void AddSiblingTo(int node) {
    Keep(m_links.AddSibling(node), NodeOf(node)->AddSibling("s", nullptr));
  }

  std::string AddSibling() {
    const int node = AnyNode();
    if (node == kNone) return "nothing";
    AddSiblingTo(node);
    return "a sibling for " + std::to_string(node);
  }

  std::string Append() {
    const int above = AnyParent();
    const int child = AnyNode();
    if (child == kNone || m_links.Reaches(child, above)) return "nothing";
    return Do(
        "appendChild " + std::to_string(child) + " to " + std::to_string(above), {child},
        [=](plain::Links& links) { return links.Append(above, child); },
        [=] { NodeOf(above)->appendChild(NodeOf(child), nullptr); });
  }

  /// Often in front of what was inserted last, because something may be known of what follows it.
  std::string Insert() {
    const int child = AnyNode();
    const bool isAgain = m_inserted != kNone && m_links.HasParent(m_inserted) && !m_random.OneIn(3);
    const std::string what = PutAt(child, isAgain ? m_inserted : AnyChild(), INSERT);
    if (child != kNone && m_links.HasParent(child)) m_inserted = child;
    return what;
  }

  std::string Replace() { return PutAt(AnyNode(), AnyChild(), REPLACE); }

  std::string PutAt(int child, int place, Kind putting) {
    if (child == kNone || place == kNone) return "nothing";
    const int above = m_links.ParentOf(place);
    if (m_links.Reaches(child, above)) return "nothing";
    const std::string numbers = std::to_string(child) + ", " + std::to_string(place);
    if (putting == INSERT) {
      return Do(
          "insertBefore " + numbers, {child},
          [=](plain::Links& links) { return links.Insert(child, place); },
          [=] { NodeOf(above)->insertBefore(NodeOf(child), NodeOf(place), nullptr); });
    }
    return Do(
        "replaceChild " + numbers, {child, place},
        [=](plain::Links& links) { return links.Replace(child, place); },
        [=] { NodeOf(above)->replaceChild(NodeOf(child), NodeOf(place), nullptr); });
  }

  std::string Remove() {
    const int child = AnyChild();
    if (child == kNone) return "nothing";
    IXMLDOMNode* const above = NodeOf(m_links.ParentOf(child));
    return Do(
        "removeChild " + std::to_string(child), {child},
        [=](plain::Links& links) { return links.Remove(child); },
        [=] { above->removeChild(NodeOf(child), nullptr); });
  }

  std::string SetOwners() {
    const int node = AnyNode();
    const int owner = AnyOwner();
    // Rarely, because the thread forgets what it has cached.
    if (node == kNone || !m_random.OneIn(4)) return "nothing";
    m_links.SetOwners(node, owner);
    NodeOf(node)->RecurseSetDocument(DocumentOf(owner));
    return "owner " + std::to_string(owner) + " for " + std::to_string(node);
  }

  /// Asks for the last child, and goes backwards, from it or from any other node.
  std::string GoBackwards() {
    const int above = AnyParent();
    Node last;
    NodeOf(above)->get_lastChild(last.Out());
    const int expected = m_links.LastChildOf(above);
    if (last.Get() != NodeOf(expected)) m_different += "the last child\n";
    int node = m_random.OneIn(3) ? AnyNode() : expected;
    for (int i = m_random.Below(40); i > 0 && node != kNone; --i) {
      if (!m_links.HasParent(node) || m_links.IsFirst(node)) break;
      const int before = m_links.Before(node);
      Node found;
      const bool isThrown =
          !Thrown([&] { NodeOf(node)->get_previousSibling(found.Out()); }).empty();
      if (isThrown != (before == kNone) || found.Get() != NodeOf(before)) {
        m_different += "what stands before " + std::to_string(node) + "\n";
      }
      node = before;
    }
    return "backwards";
  }

  Random m_random;
  std::vector<Kind> m_kinds;  // of this case, as often as they are likely
  std::vector<Document> m_documents;
  plain::Links m_links;
  std::vector<IXMLDOMNode*> m_nodes;
  int m_inserted = kNone;
  std::string m_different;
};

std::string EditSharedChains(Random random) {
  SharedChains chains(random);
  std::string steps;
  for (int i = 0; i < kSteps; ++i) {
    steps += chains.Step() + "\n";
    const std::string difference = chains.Difference();
    if (!difference.empty()) return steps + difference;
  }
  return "";
}

// Each case has a process of its own: the number of owner changes is 0 only until the first of
// them. A suite of this name runs before the others, and so before they have changed that number.
TEST(SoakSharedChainsDeathTest, Are_linked_as_plainly) {
  const auto editApart = [](Random random, Observer&) {
    return InOwnProcess([=] { return EditSharedChains(random); });
  };
  RunCases("shared chains", editApart, 5);
}

}  // namespace
