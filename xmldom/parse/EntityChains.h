#ifndef XMLDOM_PARSE_ENTITYCHAINS_H
#define XMLDOM_PARSE_ENTITYCHAINS_H

#include <cstddef>

namespace xmldom {

/// The declared entities of a document, and how long the chains are in which they refer to each
/// other: an entity that refers to a declared one has a chain of one more than that.
///
/// Declarations may come in any order. Each entity knows who refers to it, so that whatever makes
/// its chain longer is handed on to them. No chain is followed further than it takes to see that it
/// is longer than kMost, which bounds the cost and ends at cycles: an entity is handed on at most
/// kMost + 1 times to each that refers to it. Names are found in a tree that branches at their bits
/// (Patricia), at a cost linear in the name whatever names there are. Effects of all members:
/// std::bad_alloc when memory is out.
class EntityChains {
 public:
  /// Enough for every document met in practice, and less than half of what a stack of 256 KiB
  /// holds.
  static const int kMost = 256;

  EntityChains();
  ~EntityChains();

  EntityChains(const EntityChains&) = delete;
  EntityChains& operator=(const EntityChains&) = delete;

  /// Declares the entity `name`, which holds no NUL. Nothing happens when it has been declared:
  /// what Refer is told is then dropped.
  void Declare(const char* name, std::size_t length);

  /// Notes that the entity declared last refers to `name`, which need not be declared yet.
  void Refer(const char* name, std::size_t length);

  /// Whether there is a chain of more than kMost entities that each refer to the next. In a cycle
  /// of entities, which no document may have, chains have no end: then only the number of all
  /// entities that refer to others is held to kMost.
  bool AreTooLong() const { return m_isExceeded && m_referring > kMost; }

 private:
  struct Entity;
  struct Reference;

  Entity* Find(const char* name, std::size_t length);
  Entity* NewEntity(const char* name, std::size_t length);
  void Raise(Entity* entity, int chain);
  void Lengthen(Entity* entity, int chain);

  Entity* m_newest;   // of all, each knows the one made before it
  Entity* m_root;     // of the tree of names; it stands for no entity
  Entity* m_current;  // the one declared last; null when that declaration does not bind
  Entity* m_raised;   // those whose referrers do not know their chain yet
  int m_referring;    // how many entities refer to a declared one
  bool m_isExceeded;  // some chain, which may be a cycle, is longer than kMost
};

}  // namespace xmldom

#endif
