#ifndef XMLDOM_TESTS_PLAIN_PLAINLINKS_H
#define XMLDOM_TESTS_PLAIN_PLAINLINKS_H

#include <cstddef>
#include <vector>

namespace plain {

/// The links and owners of numbered nodes, as members leave them that search each chain from its
/// head and visit every node. They have the rules of TreeModel, but links and owners only, so that
/// a copy for each call costs little: a call is made on a copy first, to see whether all chains
/// still have an end.
class Links {
 public:
  static const int kNone = -1;

  /// Each adds a node and returns its number: one that is in no chain, a last child, and one behind
  /// the last sibling.
  int Add(int owner);
  int AddChild(int above);
  int AddSibling(int node);

  int ParentOf(int node) const { return m_parents[At(node)]; }
  int NextOf(int node) const { return m_next[At(node)]; }
  int FirstChildOf(int node) const { return m_firstChildren[At(node)]; }
  int OwnerOf(int node) const { return m_owners[At(node)]; }
  bool HasParent(int node) const { return ParentOf(node) != kNone; }
  /// Whether a node, which must have a parent, is its first child.
  bool IsFirst(int node) const { return FirstChildOf(ParentOf(node)) == node; }
  int LastChildOf(int node) const { return Last(FirstChildOf(node)); }
  /// The node before one that has a parent; kNone when the parent does not list it or it is the
  /// first.
  int Before(int node) const;
  /// How many links lead to each node.
  std::vector<int> CountLeading() const;

  /// Each returns false where the call throws. Insert does nothing when the parent does not list
  /// `place`.
  bool Remove(int node);
  bool Append(int above, int child);
  bool Insert(int child, int place);
  bool Replace(int child, int place);

  /// Gives a node, those that follow it and all below them one owner.
  void SetOwners(int node, int owner);

  /// Whether a way along the links leads from one node to another, or they are the same.
  bool Reaches(int from, int to) const;
  /// Whether every way along the links has an end.
  bool HasNoCycle() const;

 private:
  static std::size_t At(int node) { return static_cast<std::size_t>(node); }

  /// The last of a chain; kNone for none.
  int Last(int head) const;
  void LinkBehind(int before, int above, int node);
  void AppendChild(int above, int child);
  void PlaceBefore(int child, int above, int before, int next);

  std::vector<int> m_parents;
  std::vector<int> m_next;
  std::vector<int> m_firstChildren;
  std::vector<int> m_owners;
};

}  // namespace plain

#endif
