#include "harness/TreeModel.h"

// ---- Lifetime

TreeModel::Id TreeModel::NewNode(int type, const std::string& name, const Value& value, Id owner) {
  const Id node = m_nextId++;
  m_records[node] = Record{type, name, value, kNone, kNone, kNone, kNone, owner, 1, 1};
  return node;
}

TreeModel::Id TreeModel::NewDocument() {
  const Id document = NewNode(DOCUMENT, "Document Root", Value{false, ""}, kNone);
  Get(document).owner = document;
  return document;
}

void TreeModel::Hold(Id node) {
  ++Get(node).references;
  ++Get(node).held;
}

void TreeModel::Drop(Id node) {
  --Get(node).held;
  Release(node);
}

void TreeModel::Release(Id node) {
  if (node == kNone || --Get(node).references > 0) return;
  ClearOwners(node, 0);
  Release(Get(node).next);
  Release(Get(node).firstChild);
  Release(Get(node).firstAttribute);
  m_records.erase(node);
}

void TreeModel::Clear(Id node) {
  Record& record = Get(node);
  for (Id Record::*link : {&Record::firstAttribute, &Record::firstChild, &Record::next}) {
    const Id linked = record.*link;
    record.*link = kNone;
    Release(linked);
  }
  record.value = Value{false, ""};
}

void TreeModel::ClearOwners(Id node, int depth) {
  if (Get(node).owner == kNone) return;
  for (;;) {
    Get(node).owner = kNone;
    if (depth <= 1) Get(node).parent = kNone;
    for (Id next = Get(node).next; next != kNone; next = Get(next).next) ClearOwners(next, depth);
    node = Get(node).firstChild;
    if (node == kNone || Get(node).owner == kNone) return;
    ++depth;
  }
}

void TreeModel::SetOwner(Id node, Id owner) {
  for (; node != kNone; node = Get(node).next) {
    Get(node).owner = owner;
    SetOwner(Get(node).firstChild, owner);
  }
}

// ---- Building

void TreeModel::LinkAtEnd(Id Record::*head, Id node, Id added) {
  if (Get(node).*head == kNone) {
    Get(node).*head = added;
    return;
  }
  node = Get(node).*head;
  while (Get(node).next != kNone) node = Get(node).next;
  Get(node).next = added;
}

TreeModel::Id TreeModel::AddChild(Id node, const std::string& name, const Value& value) {
  const Id child = NewNode(ELEMENT, name, value, Get(node).owner);
  Get(child).parent = node;
  LinkAtEnd(&Record::firstChild, node, child);
  ++Get(child).references;
  return child;
}

TreeModel::Id TreeModel::AddSibling(Id node, const std::string& name, const Value& value) {
  const Id sibling = NewNode(ELEMENT, name, value, Get(node).owner);
  Get(sibling).parent = Get(node).parent;
  LinkAtEnd(&Record::next, node, sibling);
  ++Get(sibling).references;
  return sibling;
}

void TreeModel::AddText(Id node, const Value& text) {
  const Id child = NewNode(TEXT, "#Text", text, kNone);
  --Get(child).held;
  Get(child).parent = node;
  SetOwner(child, Get(node).owner);
  LinkAtEnd(&Record::firstChild, node, child);
}

bool TreeModel::AddAttribute(Id node, const std::string& name, const Value& value) {
  const Id existing = FindAttribute(node, name);
  if (existing != kNone) {
    Hold(existing);
    return false;
  }
  const Id attribute = NewNode(ATTRIBUTE, name, value, Get(node).owner);
  --Get(attribute).held;
  Get(attribute).parent = node;
  LinkAtEnd(&Record::firstAttribute, node, attribute);
  return true;
}

bool TreeModel::SetAttribute(Id node, const std::string& name, const Value& value) {
  const Id existing = FindAttribute(node, name);
  if (existing == kNone) return AddAttribute(node, name, value);
  Get(existing).value = value;
  Hold(existing);
  return true;
}

void TreeModel::AppendValue(Id node, const std::string& text) {
  if (text.empty()) return;
  Get(node).value = Value{true, Get(node).value.text + text};
}

bool TreeModel::SetValue(Id node, const Value& text) {
  if (Get(node).type != TEXT) node = Get(node).firstChild;
  if (node == kNone || Get(node).type != TEXT) return false;
  Get(node).value = text;
  return true;
}

// ---- Editing

TreeModel::Id TreeModel::NodeToPlace(Id newChild, Id parent) const {
  const Id node = Content(newChild);
  return node == kNone || Contains(node, parent) ? kNone : node;
}

TreeModel::Id TreeModel::NodeToAppend(Id newChild, Id parent) const {
  const Id node = NodeToPlace(newChild, parent);
  // What follows a node without parent comes along.
  if (node != kNone && At(node).parent == kNone) {
    for (Id next = At(node).next; next != kNone; next = At(next).next) {
      if (Contains(next, parent)) return kNone;
    }
  }
  return node;
}

/// Takes a node out of where it hangs, and says whose its reference is then: the caller's.
TreeModel::Result TreeModel::Detach(Id node) {
  const Id parent = Get(node).parent;
  if (parent == kNone) return DONE;
  if (Get(parent).firstChild == node) {
    Get(parent).firstChild = Get(node).next;
  } else {
    const Id previous = Previous(node);
    if (previous == kNone) return THROWN;
    Get(previous).next = Get(node).next;
  }
  ++Get(node).held;
  Get(node).owner = kNone;
  Get(node).next = kNone;
  Get(node).parent = kNone;
  return DONE;
}

void TreeModel::PlaceBefore(Id node, Id parent, Id next) {
  --Get(node).held;
  Get(node).next = next;
  Get(node).parent = parent;
  SetOwner(node, Get(parent).owner);
}

TreeModel::Result TreeModel::Append(Id parent, Id newChild) {
  const Id node = NodeToAppend(newChild, parent);
  if (node == kNone) return REFUSED;
  if (node != newChild) Hold(node);
  if (Detach(node) == THROWN) return THROWN;
  LinkAtEnd(&Record::firstChild, parent, node);
  PlaceBefore(node, parent, Get(node).next);
  return DONE;
}

TreeModel::Result TreeModel::InsertBefore(Id parent, Id newChild, Id reference) {
  if (newChild == kNone || reference == kNone || Get(reference).parent != parent) return REFUSED;
  const bool isFirst = Get(parent).firstChild == reference;
  const Id previous = isFirst ? kNone : Previous(reference);
  if (!isFirst && previous == kNone) return NOT_FOUND;
  const Id node = NodeToPlace(newChild, parent);
  if (node == kNone) return REFUSED;
  if (node == reference || node == previous) return DONE;
  if (Detach(node) == THROWN) return THROWN;
  const Id followers = Get(node).next;
  PlaceBefore(node, parent, reference);
  (isFirst ? Get(parent).firstChild : Get(previous).next) = node;
  Release(followers);
  return DONE;
}

TreeModel::Result TreeModel::Replace(Id parent, Id newChild, Id old) {
  if (old == kNone || Get(old).parent != parent) return REFUSED;
  const Id node = NodeToPlace(newChild, parent);
  if (node == kNone) return REFUSED;
  if (node == old) return DONE;
  if (Detach(node) == THROWN) return THROWN;
  const Id followers = Get(node).next;
  Get(node).next = kNone;
  const bool isFirst = Get(parent).firstChild == old;
  const Id previous = isFirst ? kNone : Previous(old);
  if (!isFirst && previous == kNone) {
    Release(followers);
    return THROWN;
  }
  PlaceBefore(node, parent, Get(old).next);
  (isFirst ? Get(parent).firstChild : Get(previous).next) = node;
  ++Get(old).held;
  Get(old).next = kNone;
  Get(old).parent = kNone;
  SetOwner(old, kNone);
  Release(followers);
  return DONE;
}

TreeModel::Result TreeModel::Remove(Id parent, Id old) {
  if (old == kNone || Get(old).parent != parent) return REFUSED;
  return Detach(old);
}

TreeModel::Result TreeModel::TakeOut(Id node) { return Detach(node); }

void TreeModel::Adopt(Id node, Id owner) {
  Get(node).owner = owner;
  for (Id first : {Get(node).firstAttribute, Get(node).firstChild}) {
    for (; first != kNone; first = Get(first).next) Adopt(first, owner);
  }
}

// ---- Facts

TreeModel::Id TreeModel::Content(Id node) const {
  return node != kNone && At(node).type == DOCUMENT ? At(node).firstChild : node;
}

bool TreeModel::IsLinked(Id node) const {
  for (const auto& entry : m_records) {
    const Record& record = entry.second;
    if (record.next == node || record.firstChild == node || record.firstAttribute == node) {
      return true;
    }
  }
  return false;
}

bool TreeModel::Contains(Id top, Id node) const {
  if (top == node) return true;
  for (Id first : {At(top).firstAttribute, At(top).firstChild}) {
    for (; first != kNone; first = At(first).next) {
      if (Contains(first, node)) return true;
    }
  }
  return false;
}

TreeModel::Id TreeModel::FindAttribute(Id node, const std::string& name) const {
  for (Id next = At(node).firstAttribute; next != kNone; next = At(next).next) {
    if (At(next).name == name) return next;
  }
  return kNone;
}

TreeModel::Id TreeModel::Previous(Id node) const {
  for (Id next = At(At(node).parent).firstChild; next != kNone; next = At(next).next) {
    if (At(next).next == node) return next;
  }
  return kNone;
}
