#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "plain/PlainEditing.h"
#include "plain/PlainLifetime.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

/// Whether moving a node leaves it in one chain only: nothing leads to it, or its parent lists it.
bool StandsInOnePlace(const Forest& forest, const IXMLDOMNode* node) {
  if (node == nullptr || forest.LinksTo(node) == 0) return true;
  if (node->m_pParent == nullptr) return false;
  for (const IXMLDOMNode* child = node->m_pParent->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    if (child == node) return true;
  }
  return false;
}

/// One call that edits.
struct EditingCall {
  int kind;
  int node;
  int newChild;   // -1: null
  int reference;  // -1: null

  EditingCall(Random& random, const Forest& forest)
      : kind(random.Below(7)),
        node(random.Below(forest.Count())),
        newChild(random.Below(forest.Count() + 1) - 1),
        reference(random.Below(forest.Count() + 1) - 1) {
    // Mostly a reference child that is one.
    const void* parent = reference < 0 ? nullptr : forest.At(reference)->m_pParent;
    for (int i = 0; parent != nullptr && !random.OneIn(8) && i < forest.Count(); ++i) {
      if (forest.At(i) == parent) node = i;
    }
  }

  /// Whether the links make a tree afterwards.
  bool CanBeMade(const Forest& forest) const {
    if (kind > 3) return true;
    if (kind == 3) return reference < 0 || StandsInOnePlace(forest, forest.At(reference));
    const IXMLDOMNode* moved = newChild < 0 ? nullptr : forest.At(newChild);
    if (moved != nullptr && moved->m_eNodeType == NODE_DOCUMENT) moved = moved->m_pFirstChild;
    // A document itself is no child.
    if (moved == forest.At(0) || moved == forest.At(1)) return false;
    return StandsInOnePlace(forest, moved);
  }

  std::string Run(Forest& forest, bool library) const;
  std::string Name() const {
    static const char* const kNames[] = {"appendChild", "insertBefore",     "replaceChild",
                                         "removeChild", "remove from tree", "set owners",
                                         "clear owners"};
    return std::string(kNames[kind]) + " at #" + std::to_string(node) + ", new #" +
           std::to_string(newChild) + ", reference #" + std::to_string(reference) + "\n";
  }
};

std::string EditingCall::Run(Forest& forest, bool library) const {
  IXMLDOMNode* target = forest.At(node);
  IXMLDOMNode* moved = newChild < 0 ? nullptr : forest.At(newChild);
  IXMLDOMNode* old = reference < 0 ? nullptr : forest.At(reference);
  IXMLDOMNode* out = nullptr;
  HRESULT result = S_OK;
  // What is not in a tree yet comes with a reference for it.
  const IXMLDOMNode* content =
      moved != nullptr && moved->m_eNodeType == NODE_DOCUMENT ? moved->m_pFirstChild : moved;
  const int linksBefore = content == nullptr ? 0 : forest.LinksTo(content);
  switch (kind) {
    case 0:
      result = library ? target->appendChild(moved, &out) : plain::appendChild(target, moved, &out);
      break;
    case 1:
      result = library ? target->insertBefore(moved, old, &out)
                       : plain::insertBefore(target, moved, old, &out);
      break;
    case 2:
      result = library ? target->replaceChild(moved, old, &out)
                       : plain::replaceChild(target, moved, old, &out);
      break;
    case 3:
      result = library ? target->removeChild(old, &out) : plain::removeChild(target, old, &out);
      break;
    case 4:
      if (StandsInOnePlace(forest, target)) {
        library ? target->RemoveNodeFromTree() : plain::RemoveNodeFromTree(target);
      }
      break;
    case 5: {
      IXMLDOMDocument2* owner = newChild < 2 ? nullptr : forest.Document(newChild % 2);
      if (node < 2) break;
      library ? target->RecurseSetDocument(owner) : plain::RecurseSetDocument(target, owner);
      break;
    }
    default:
      if (node < 2) break;
      library ? target->RecurseClearDocument(reference)
              : plain::RecurseClearDocument(target, reference);
  }
  if (content != nullptr && linksBefore == 0 && forest.LinksTo(content) == 1) {
    const_cast<IXMLDOMNode*>(content)->AddRef();
  }
  return Name() + "gives " + std::to_string(result) + ", " + forest.NameOf(out) + "\n";
}

/// Lets a node that stands alone be followed by another such node, if both numbers are of one.
void FollowByHand(Forest& forest, int first, int next) {
  for (int number : {first, next}) {
    const IXMLDOMNode* node = forest.At(number);
    if (number < 2 || node->m_pParent != nullptr || forest.LinksTo(node) != 0) return;
  }
  if (first == next || forest.At(first)->m_pNextSibling != nullptr) return;
  for (IXMLDOMNode* last = forest.At(next); last != nullptr; last = last->m_pNextSibling) {
    if (last == forest.At(first)) return;
  }
  forest.At(next)->AddRef();
  forest.At(first)->m_pNextSibling = forest.At(next);
}

/// Sometimes the new child is what stands, without a parent, before the node that is edited.
void PreferNewChildBefore(const Forest& forest, EditingCall* call) {
  if (call->kind != 1 && call->kind != 2) return;
  for (int i = 2; i < forest.Count(); ++i) {
    const IXMLDOMNode* node = forest.At(i);
    if (node->m_pParent == nullptr && node->m_pNextSibling == forest.At(call->node)) {
      call->newChild = i;
    }
  }
}

/// What the node class asks of those who change links or owners themselves: a release makes the
/// library look at chains anew, and RecurseSetDocument for a node with a parent at the owners of
/// all siblings.
void NoteChangesByHand() {
  const XMLPtr<IXMLDOMNode> parent =
      xmldom::Adopt(new IXMLDOMNode(nullptr, "p", nullptr, NODE_ELEMENT));
  xmldom::Adopt(parent->AddChild("c", nullptr))->RecurseSetDocument(nullptr);
}

std::string EditRandomly(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 3 + random.Below(14);
  shape.changesByHand = random.OneIn(2) ? 0 : random.Below(6);
  shape.sharesNodes = false;
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  if (shape.changesByHand != 0) NoteChangesByHand();
  std::string calls;
  for (int count = 2 + random.Below(6); count > 0; --count) {
    if (random.OneIn(5)) {
      Random again = random;
      one.ChangeByHand(random, shape);
      two.ChangeByHand(again, shape);
      NoteChangesByHand();
      calls += "change by hand\n";
    }
    if (random.OneIn(3)) {
      const int first = random.Below(one.Count());
      const int next = random.Below(one.Count());
      FollowByHand(one, first, next);
      FollowByHand(two, first, next);
      NoteChangesByHand();
    }
    EditingCall call(random, one);
    if (random.OneIn(2)) PreferNewChildBefore(one, &call);
    if (!call.CanBeMade(one)) continue;
    const std::string before = one.State();
    const auto run = [&](Forest& forest, bool library) {
      const std::string seen =
          observer.Observe([&](std::string& results) { results += call.Run(forest, library); });
      return seen + forest.State();
    };
    const std::string difference = Difference(run(one, true), run(two, false));
    if (!difference.empty()) return calls + call.Name() + "before:\n" + before + difference;
    calls += call.Name();
  }
  return "";
}

TEST(SoakEditing, Nodes_are_moved_and_given_owners_as_plainly) {
  RunCases("editing", EditRandomly);
}

}  // namespace
