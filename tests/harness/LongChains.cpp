#include "harness/LongChains.h"

#include <algorithm>
#include <new>
#include <utility>

#include "harness/AllocationFailure.h"

namespace {

const std::size_t kChains = 3;
const std::size_t kMostChildren = 400;

}  // namespace

LongChains::LongChains(unsigned int seed)
    : m_random(seed),
      m_passesOften(seed / 2 % 2 == 0),
      m_document(NewDocument()),
      m_owner(nullptr),
      m_chains(kChains) {
  // Nodes without owner keep the links to parents that are gone.
  if (seed % 2 == 0) m_owner = m_document;
  for (Chain& chain : m_chains) {
    chain.parent = NewElement(m_owner, "p");
    for (int i = Below(300); i > 0; --i) AddNewChild(chain);
  }
}

LongChains::~LongChains() = default;

std::string LongChains::Step() {
  typedef std::string (LongChains::*Call)();
  static const Call calls[] = {
      &LongChains::Append,
      &LongChains::Append,
      &LongChains::AppendWithoutMemory,
      &LongChains::InsertSomewhere,
      &LongChains::InsertSomewhere,
      &LongChains::InsertSomewhere,
      &LongChains::RemoveSomewhere,
      &LongChains::RemoveSomewhere,
      &LongChains::RemoveFromTheEnd,
      &LongChains::RemoveFromTheEnd,
      &LongChains::GoBackwards,
      &LongChains::GoBackwards,
      &LongChains::Queue,
      &LongChains::Replace,
      &LongChains::Move,
      &LongChains::Move,
      &LongChains::TakeOutAndKeep,
      &LongChains::TakeOutAndKeep,
      &LongChains::PutBack,
      &LongChains::DestroyOwn,
      &LongChains::UnlinkByHand,
      &LongChains::UnlinkByHand,
      &LongChains::UnlinkByHandAndKeep,
      &LongChains::TakeOutByHandForAWhile,
      &LongChains::TakeOutByHandForAWhile,
      &LongChains::InsertByHand,
      &LongChains::MoveTailByHand,
      &LongChains::ReverseByHand,
      &LongChains::CutTailOff,
      &LongChains::DestroyAll,
      &LongChains::Outlive,
  };
  const std::size_t count = sizeof calls / sizeof calls[0];
  // The last ones change so much that nothing remembered would last if they came often.
  const std::size_t most = Below(4) == 0 ? count : count - 5;
  const Call call = calls[Below(most)];
  std::string what;
  const auto run = [&] { what = (this->*call)(); };
  // Every second session passes its documents on all the time.
  std::unique_ptr<Worker>& worker = m_workers[Below(2)];
  if (Below(m_passesOften ? 2 : 12) == 0) {
    if (worker == nullptr) worker.reset(new Worker);
    worker->Run(run);
    what += " in another thread";
    if (Below(20) == 0) worker.reset();
  } else {
    run();
  }
  return what;
}

std::string LongChains::Difference() {
  for (const Chain& chain : m_chains) {
    const IXMLDOMNode* linked = chain.parent->m_pFirstChild;
    for (const IXMLDOMNode* child : chain.children) {
      Expect(linked == child, "a link");
      if (linked == nullptr) break;
      Expect(linked->m_pParent == chain.parent.Get(), "a parent");
      linked = linked->m_pNextSibling;
    }
    Expect(linked == nullptr, "a child too many");
  }
  return m_unexpected;
}

int LongChains::Below(std::size_t limit) {
  return limit == 0 ? 0 : static_cast<int>(m_random() % limit);
}

LongChains::Chain& LongChains::AnyChain() {
  // Mostly the same one, so that something of it is remembered.
  Chain& chain = m_chains[Below(3) == 0 ? static_cast<std::size_t>(Below(kChains)) : 0];
  if (chain.children.empty()) AddNewChild(chain);
  return chain;
}

LongChains::Place LongChains::AnyPlace(Chain& chain) {
  const std::size_t size = chain.children.size();
  std::size_t place = static_cast<std::size_t>(Below(size));
  const int kind = Below(8);
  if (kind < 3) place = size - 1 - std::min<std::size_t>(size - 1, static_cast<unsigned>(kind));
  if (kind == 3) place %= 20;
  return chain.children.begin() + static_cast<std::ptrdiff_t>(place);
}

/// Some children have a child of their own, so that more than one node goes with them.
IXMLDOMNode* LongChains::NewChild() {
  IXMLDOMNode* child = NewElement(m_owner, "c").Detach();
  if (Below(4) == 0) child->AddTextChild("t");
  return child;
}

void LongChains::AddNewChild(Chain& chain) {
  IXMLDOMNode* const child = NewChild();
  chain.parent->AddChild(child);
  chain.children.push_back(child);
}

IXMLDOMNode*& LongChains::LinkTo(Chain& chain, Place place) {
  return place == chain.children.begin() ? chain.parent->m_pFirstChild
                                         : (*(place - 1))->m_pNextSibling;
}

IXMLDOMNode* LongChains::TakeOut(Chain& chain, Place place) {
  IXMLDOMNode* const child = *place;
  IXMLDOMNode* removed = nullptr;
  const HRESULT result = chain.parent->removeChild(child, &removed);
  Expect(result == S_OK && removed == child, "a removal");
  chain.children.erase(place);
  return child;
}

void LongChains::Insert(Chain& chain, Place place, IXMLDOMNode* node) {
  if (place == chain.children.end()) {
    Expect(chain.parent->appendChild(node, nullptr) == S_OK, "an addition");
  } else {
    Expect(chain.parent->insertBefore(node, *place, nullptr) == S_OK, "an insertion");
  }
  chain.children.insert(place, node);
}

void LongChains::Expect(bool isTrue, const std::string& what) {
  if (!isTrue) m_unexpected += what + "\n";
}

void LongChains::Ask(Chain& chain, Place place) {
  Node before;
  (*place)->get_previousSibling(before.Out());
  IXMLDOMNode* const expected = place == chain.children.begin() ? nullptr : *(place - 1);
  Expect(before.Get() == expected, "a previous sibling");
  if (Below(2) == 0) return;
  Node last;
  chain.parent->get_lastChild(last.Out());
  Expect(last.Get() == chain.children.back(), "a last child");
}

std::string LongChains::Append() {
  Chain& chain = AnyChain();
  for (int i = Below(20); i >= 0 && chain.children.size() < kMostChildren; --i) AddNewChild(chain);
  return "AddChild";
}

std::string LongChains::AppendWithoutMemory() {
  Chain& chain = AnyChain();
  chain.children.reserve(kMostChildren * 2);
  const Place place = AnyPlace(chain);
  IXMLDOMNode* const expected = place == chain.children.begin() ? nullptr : *(place - 1);
  Node before;
  bool isThrown = false;
  {
    const AllocationFailure failure(Below(5));
    (*place)->get_previousSibling(before.Out());
    try {
      for (;;) {
        const Node child(chain.parent->AddChild("n", "v"));
        chain.children.push_back(child);
      }
    } catch (const std::bad_alloc&) {
      isThrown = true;
    }
  }
  Expect(before.Get() == expected, "a previous sibling");
  Expect(isThrown, "no exception");
  return "AddChild without memory";
}

std::string LongChains::InsertSomewhere() {
  Chain& chain = AnyChain();
  Place place = AnyPlace(chain);
  for (int i = Below(20); i >= 0 && chain.children.size() < kMostChildren; --i) {
    const std::ptrdiff_t position = place - chain.children.begin();
    Insert(chain, place, NewChild());
    place = chain.children.begin() + position + Below(2);
  }
  return "insertBefore";
}

std::string LongChains::RemoveSomewhere() {
  Chain& chain = AnyChain();
  TakeOut(chain, AnyPlace(chain))->RealRelease();
  return "removeChild";
}

std::string LongChains::RemoveFromTheEnd() {
  Chain& chain = AnyChain();
  for (int i = Below(60); i >= 0 && !chain.children.empty(); --i) {
    if (Below(4) == 0) Ask(chain, chain.children.end() - 1);
    TakeOut(chain, chain.children.end() - 1)->RealRelease();
  }
  return "removeChild of the last";
}

std::string LongChains::GoBackwards() {
  Chain& chain = AnyChain();
  Place place = AnyPlace(chain);
  for (int i = Below(200); i > 0 && place != chain.children.begin(); --i) {
    Ask(chain, place);
    --place;
    // Some of what is gone by is removed, or gets a new neighbour.
    const std::ptrdiff_t position = place - chain.children.begin();
    if (Below(20) == 0) TakeOut(chain, place + 1)->RealRelease();
    if (Below(20) == 0) Insert(chain, chain.children.begin() + position, NewChild());
    place = chain.children.begin() + position;
  }
  return "get_previousSibling";
}

std::string LongChains::Queue() {
  Chain& chain = AnyChain();
  for (int i = Below(40); i >= 0; --i) {
    Insert(chain, chain.children.end(), NewChild());
    TakeOut(chain, chain.children.begin())->RealRelease();
  }
  return "a queue";
}

std::string LongChains::Replace() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain);
  IXMLDOMNode* child = NewChild();
  Node old;
  const HRESULT result = chain.parent->replaceChild(child, *place, old.Out());
  Expect(result == S_OK && old.Get() == *place, "a replacement");
  *place = child;
  return "replaceChild";
}

std::string LongChains::Move() {
  Chain& from = AnyChain();
  Chain& to = AnyChain();
  const Place place = AnyPlace(from);
  IXMLDOMNode* const node = *place;
  from.children.erase(place);
  if (to.children.empty() || Below(2) == 0) {
    Expect(to.parent->appendChild(node, nullptr) == S_OK, "an addition");
    to.children.push_back(node);
  } else {
    const Place target = AnyPlace(to);
    Expect(to.parent->insertBefore(node, *target, nullptr) == S_OK, "an insertion");
    to.children.insert(target, node);
  }
  return "a move";
}

std::string LongChains::DestroyAll() {
  Chain& chain = AnyChain();
  Node kept = Keep(*AnyPlace(chain));
  if (Below(2) == 0) {
    chain.parent->ClearNode(false);
  } else {
    chain.parent = NewElement(m_owner, "p");
  }
  chain.children.clear();
  return "the end of all children but one";
}

std::string LongChains::UnlinkByHand() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain);
  IXMLDOMNode* const node = *place;
  LinkTo(chain, place) = node->m_pNextSibling;
  node->m_pNextSibling = nullptr;
  if (Below(2) == 0) node->m_pParent = nullptr;
  chain.children.erase(place);
  node->RealRelease();
  return "an unlinking by hand";
}

std::string LongChains::InsertByHand() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain) + 1;
  IXMLDOMNode* node = NewChild();
  node->m_pParent = chain.parent.Get();
  node->m_pNextSibling = place == chain.children.end() ? nullptr : *place;
  (*(place - 1))->m_pNextSibling = node;
  chain.children.insert(place, node);
  return "an insertion by hand";
}

std::string LongChains::MoveTailByHand() {
  Chain& from = AnyChain();
  Chain& to = AnyChain();
  if (&from == &to) return "nothing";
  const Place place = AnyPlace(from);
  IXMLDOMNode* const head = *place;
  LinkTo(from, place) = nullptr;
  to.children.back()->m_pNextSibling = head;
  for (Place moved = place; moved != from.children.end(); ++moved)
    (*moved)->m_pParent = to.parent.Get();
  to.children.insert(to.children.end(), place, from.children.end());
  from.children.erase(place, from.children.end());
  return "a move by hand";
}

std::string LongChains::ReverseByHand() {
  Chain& chain = AnyChain();
  std::reverse(chain.children.begin(), chain.children.end());
  IXMLDOMNode** link = &chain.parent.Get()->m_pFirstChild;
  for (IXMLDOMNode* child : chain.children) {
    *link = child;
    link = &child->m_pNextSibling;
  }
  *link = nullptr;
  return "a reversal by hand";
}

/// Destroys what follows a child, except one that is kept for a moment.
std::string LongChains::CutTailOff() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain);
  const Node kept = Keep(chain.children.back());
  (*place)->ClearNode(false);
  chain.children.erase(place + 1, chain.children.end());
  return "ClearNode";
}

std::string LongChains::TakeOutAndKeep() {
  Chain& chain = AnyChain();
  for (int i = Below(30); i >= 0 && !chain.children.empty(); --i) {
    m_kept.push_back(xmldom::Adopt(TakeOut(chain, AnyPlace(chain))));
  }
  return "removeChild of nodes that stay";
}

std::string LongChains::PutBack() {
  Chain& chain = AnyChain();
  for (int i = Below(30); i >= 0 && !m_kept.empty(); --i) {
    std::swap(m_kept[static_cast<std::size_t>(Below(m_kept.size()))], m_kept.back());
    IXMLDOMNode* const node = m_kept.back().Detach();
    m_kept.pop_back();
    if (Below(4) == 0 || chain.children.size() >= kMostChildren) {
      node->RealRelease();
    } else {
      Insert(chain, AnyPlace(chain), node);
    }
  }
  return "insertBefore of nodes that were taken out";
}

/// Destroys a parent, or all its children but the last ones, which go on naming it when they have
/// no owner. No parent lists them, not even a new one at the same address.
std::string LongChains::Outlive() {
  m_outlived.clear();
  Chain& chain = AnyChain();
  const std::size_t count = chain.children.size();
  const std::size_t kept = std::min<std::size_t>(count, 1 + static_cast<std::size_t>(Below(40)));
  for (std::size_t i = count - kept; i < count; ++i) m_outlived.push_back(Keep(chain.children[i]));
  if (Below(2) == 0) {
    chain.parent->ClearNode(false);
  } else {
    chain.parent = nullptr;
    chain.parent = NewElement(m_owner, "p");
  }
  chain.children.clear();
  for (int i = Below(100); i > 0; --i) AddNewChild(chain);
  for (std::size_t i = 0; i < m_outlived.size(); ++i) {
    if (m_outlived[i]->m_pParent != chain.parent.Get()) continue;
    Node before;
    bool isThrown = false;
    try {
      m_outlived[i]->get_previousSibling(before.Out());
    } catch (CLogException* exception) {
      isThrown = true;
      delete exception;
    }
    Expect(isThrown, "no exception for a node that its parent does not list");
  }
  return "the end of a parent";
}

/// The node goes on naming the next sibling, but not the parent.
std::string LongChains::UnlinkByHandAndKeep() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain);
  IXMLDOMNode* const node = *place;
  LinkTo(chain, place) = node->m_pNextSibling;
  node->m_pParent = nullptr;
  chain.children.erase(place);
  for (int i = Below(8); i > 0 && !chain.children.empty(); --i) Ask(chain, AnyPlace(chain));
  node->m_pNextSibling = nullptr;
  m_kept.push_back(xmldom::Adopt(node));
  return "an unlinking by hand of a node that stays";
}

/// A single node is out of its chain for some calls, and goes on naming parent and next sibling.
std::string LongChains::TakeOutByHandForAWhile() {
  Chain& chain = AnyChain();
  const Place place = AnyPlace(chain);
  if (place == chain.children.begin() || place + 1 == chain.children.end()) return "nothing";
  const std::size_t position = static_cast<std::size_t>(place - chain.children.begin());
  const Node node(*place);
  IXMLDOMNode* const next = node->m_pNextSibling;
  if (Below(2) == 0) Ask(chain, place + 1);
  (*(place - 1))->m_pNextSibling = next;
  next->AddRef();
  chain.children.erase(place);
  for (int i = Below(20); i >= 0 && position < chain.children.size(); --i) {
    const Place behind = chain.children.begin() + static_cast<std::ptrdiff_t>(position);
    Ask(chain, Below(2) == 0 ? behind : AnyPlace(chain));
    if (Below(4) == 0) Insert(chain, behind, NewChild());
    if (Below(4) == 0) Insert(chain, chain.children.end(), NewChild());
    if (Below(4) == 0) TakeOut(chain, AnyPlace(chain))->RealRelease();
  }
  node->m_pNextSibling = nullptr;
  node->m_pParent = nullptr;
  next->RealRelease();
  return "a node out of its chain for a while";
}

/// Builds something beside the chains and destroys it.
std::string LongChains::DestroyOwn() {
  const Node own(NewElement(nullptr, "o"));
  for (int i = Below(60); i > 0; --i) own->AddChild(NewElement(nullptr, "c").Detach());
  while (own->m_pFirstChild != nullptr && Below(40) != 0) {
    Node removed;
    own->removeChild(own->m_pFirstChild, removed.Out());
  }
  return "the end of other nodes";
}
