#include "plain/PlainLinks.h"

namespace plain {

const int Links::kNone;

int Links::Add(int owner) {
  m_parents.push_back(kNone);
  m_next.push_back(kNone);
  m_firstChildren.push_back(kNone);
  m_owners.push_back(owner);
  return static_cast<int>(m_parents.size()) - 1;
}

int Links::AddChild(int above) {
  const int child = Add(OwnerOf(above));
  AppendChild(above, child);
  return child;
}

int Links::AddSibling(int node) {
  const int sibling = Add(OwnerOf(node));
  m_parents[At(sibling)] = ParentOf(node);
  m_next[At(Last(node))] = sibling;
  return sibling;
}

int Links::Last(int head) const {
  int last = head;
  for (int node = head; node != kNone; node = NextOf(node)) last = node;
  return last;
}

int Links::Before(int node) const {
  int before = FirstChildOf(ParentOf(node));
  while (before != kNone && NextOf(before) != node) before = NextOf(before);
  return before;
}

std::vector<int> Links::CountLeading() const {
  std::vector<int> leading(m_next.size(), 0);
  for (const std::vector<int>& targets : {m_next, m_firstChildren}) {
    for (int target : targets) {
      if (target != kNone) ++leading[At(target)];
    }
  }
  return leading;
}

bool Links::Remove(int node) {
  if (!HasParent(node)) return true;
  const int before = Before(node);
  if (!IsFirst(node) && before == kNone) return false;
  LinkBehind(before, ParentOf(node), NextOf(node));
  m_parents[At(node)] = m_next[At(node)] = m_owners[At(node)] = kNone;
  return true;
}

bool Links::Append(int above, int child) {
  if (!Remove(child)) return false;
  AppendChild(above, child);
  return true;
}

bool Links::Insert(int child, int place) {
  const int before = Before(place);
  if (!IsFirst(place) && before == kNone) return true;
  if (child == place || child == before) return true;
  if (!Remove(child)) return false;
  PlaceBefore(child, ParentOf(place), before, place);
  return true;
}

bool Links::Replace(int child, int place) {
  if (child == place) return true;
  if (!Remove(child)) return false;
  m_next[At(child)] = kNone;
  const int before = Before(place);
  if (!IsFirst(place) && before == kNone) return false;
  PlaceBefore(child, ParentOf(place), before, NextOf(place));
  m_next[At(place)] = m_parents[At(place)] = kNone;
  if (HasNoCycle()) SetOwners(place, kNone);
  return true;
}

void Links::SetOwners(int node, int owner) {
  for (; node != kNone; node = NextOf(node)) {
    m_owners[At(node)] = owner;
    SetOwners(FirstChildOf(node), owner);
  }
}

bool Links::Reaches(int from, int to) const {
  std::vector<bool> isSeen(m_next.size(), false);
  std::vector<int> open(1, from);
  while (!open.empty()) {
    const int node = open.back();
    open.pop_back();
    if (node == to) return true;
    if (node == kNone || isSeen[At(node)]) continue;
    isSeen[At(node)] = true;
    open.push_back(NextOf(node));
    open.push_back(FirstChildOf(node));
  }
  return false;
}

bool Links::HasNoCycle() const {
  // A node that no unread link leads to is read, until none is left.
  std::vector<int> leading = CountLeading();
  std::vector<int> open;
  for (std::size_t node = 0; node < leading.size(); ++node) {
    if (leading[node] == 0) open.push_back(static_cast<int>(node));
  }
  std::size_t read = 0;
  for (; !open.empty(); ++read) {
    const int node = open.back();
    open.pop_back();
    for (int target : {NextOf(node), FirstChildOf(node)}) {
      if (target != kNone && --leading[At(target)] == 0) open.push_back(target);
    }
  }
  return read == leading.size();
}

void Links::LinkBehind(int before, int above, int node) {
  (before == kNone ? m_firstChildren[At(above)] : m_next[At(before)]) = node;
}

void Links::AppendChild(int above, int child) {
  m_parents[At(child)] = above;
  SetOwners(child, OwnerOf(above));
  LinkBehind(LastChildOf(above), above, child);
}

void Links::PlaceBefore(int child, int above, int before, int next) {
  m_parents[At(child)] = above;
  m_next[At(child)] = next;
  LinkBehind(before, above, child);
  // In a cycle the walk would not end; the caller then discards the result.
  if (HasNoCycle()) SetOwners(child, OwnerOf(above));
}

}  // namespace plain
