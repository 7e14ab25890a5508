#ifndef XMLDOM_TESTS_HARNESS_TREEMODEL_H
#define XMLDOM_TESTS_HARNESS_TREEMODEL_H

#include <map>
#include <string>

/// Trees of plain records, and the rules by which edits change them, told as simply as possible:
/// what the library is compared with. It recurses, searches whole chains, and knows nothing of the
/// library but the numbers of its types.
class TreeModel {
 public:
  typedef int Id;  // of a record that is or was alive; never used again
  static const Id kNone = -1;

  enum Result { DONE, NOT_FOUND, REFUSED, THROWN };

  enum Type { ELEMENT = 1, ATTRIBUTE = 2, TEXT = 3, DOCUMENT = 9 };

  /// A value that can be missing.
  struct Value {
    bool isThere;
    std::string text;
  };

  struct Record {
    int type;
    std::string name;
    Value value;
    Id next;
    Id firstChild;
    Id firstAttribute;
    Id parent;
    Id owner;
    int references;
    int held;  // of the references, those of the caller
  };

  typedef std::map<Id, Record> Records;

  // ---- Lifetime. What is made is held once.

  Id NewDocument();
  Id NewNode(int type, const std::string& name, const Value& value, Id owner);
  void Hold(Id node);
  /// Gives back one reference of the caller.
  void Drop(Id node);
  void Clear(Id node);

  // ---- Building

  /// The new element, which is held.
  Id AddChild(Id node, const std::string& name, const Value& value);
  Id AddSibling(Id node, const std::string& name, const Value& value);
  void AddText(Id node, const Value& text);
  bool AddAttribute(Id node, const std::string& name, const Value& value);
  bool SetAttribute(Id node, const std::string& name, const Value& value);
  void AppendValue(Id node, const std::string& text);
  /// False when the node has no text of its own to set.
  bool SetValue(Id node, const Value& text);

  // ---- Editing. What leaves its place is held.

  Result Append(Id parent, Id newChild);
  Result InsertBefore(Id parent, Id newChild, Id reference);
  Result Replace(Id parent, Id newChild, Id old);
  Result Remove(Id parent, Id old);
  Result TakeOut(Id node);
  /// Gives a node and all below it, attributes too, an owner.
  void Adopt(Id node, Id owner);

  // ---- Facts

  const Records& All() const { return m_records; }
  const Record& At(Id node) const { return m_records.at(node); }
  /// Above every Id that there has been.
  Id NextId() const { return m_nextId; }
  bool IsAlive(Id node) const { return m_records.count(node) != 0; }
  /// What stands for a node when it is put in place: for a document its first child.
  Id Content(Id node) const;
  /// Whether some record links to this one as a child, an attribute or a sibling.
  bool IsLinked(Id node) const;
  /// Whether `node` is `top` or hangs below it, or below one of its attributes.
  bool Contains(Id top, Id node) const;
  Id FindAttribute(Id node, const std::string& name) const;
  /// The node before this one below its parent; kNone when the parent does not list it.
  Id Previous(Id node) const;

 private:
  Record& Get(Id node) { return m_records.at(node); }
  void Release(Id node);
  void ClearOwners(Id node, int depth);
  void SetOwner(Id node, Id owner);
  void LinkAtEnd(Id Record::*head, Id node, Id added);
  Id NodeToPlace(Id newChild, Id parent) const;
  Id NodeToAppend(Id newChild, Id parent) const;
  Result Detach(Id node);
  void PlaceBefore(Id node, Id parent, Id next);

  Records m_records;
  Id m_nextId = 0;
};

#endif
