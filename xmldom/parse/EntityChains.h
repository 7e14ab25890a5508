#ifndef XMLDOM_PARSE_ENTITYCHAINS_H
#define XMLDOM_PARSE_ENTITYCHAINS_H

#include <cstddef>

namespace xmldom {

/// The declared entities of a document, and the length of the chains in which they refer to each
/// other. The chain of an entity that refers to no declared entity has the length 0; that of any
/// other is one longer than the longest chain among the entities to which it refers.
///
/// Entities may be declared in any order. Each entity has a list of those that refer to it; when
/// its chain gets longer, so do theirs. Lengths are not followed beyond kMost + 1, so that the work
/// ends in cycles of references too. Effects of all members: std::bad_alloc when memory is out.
/// Cost: linear in the names, and for all references together at most kMost + 2 steps each. Names
/// are found in a Patricia tree, which is as fast for names chosen by an attacker as for any
/// others.
class EntityChains {
 public:
  /// The longest chain that is allowed. Documents in practice have far shorter ones, and Expat
  /// needs less than half of a stack of 256 KiB to expand it.
  static const int kMost = 256;

  EntityChains();
  ~EntityChains();

  EntityChains(const EntityChains&) = delete;
  EntityChains& operator=(const EntityChains&) = delete;

  /// Begins the declaration of the entity `name`, which holds no NUL byte. In XML the first
  /// declaration of a name counts: for a name that has been declared before, this and the calls of
  /// Refer that follow change nothing.
  void Declare(const char* name, std::size_t length);

  /// Notes that the value of the entity that was declared last refers to `name`, which need not be
  /// declared yet.
  void Refer(const char* name, std::size_t length);

  /// Result: whether there may be a chain longer than kMost. Chains in a cycle of entities have no
  /// end, but the parser refuses to expand a cycle, and visits no entity twice on the way: a
  /// document is safe as long as no more than kMost of its entities refer to others.
  bool AreTooLong() const { return m_isExceeded && m_referring > kMost; }

 private:
  struct Entity;
  struct Reference;

  Entity* Find(const char* name, std::size_t length);
  Entity* NewEntity(const char* name, std::size_t length);
  void Raise(Entity* entity, int chain);
  void Lengthen(Entity* entity, int chain);

  Entity* m_newest;   // the head of a list of all entities, in the reverse order of their making
  Entity* m_root;     // of the tree of names; it stands for no entity
  Entity* m_current;  // the entity of the last declaration; null when its name was declared before
  Entity* m_raised;   // the head of a list of entities whose new length has not been passed on
  int m_referring;    // number of entities that refer to a declared one
  bool m_isExceeded;  // a chain, or a cycle, is longer than kMost
};

}  // namespace xmldom

#endif
