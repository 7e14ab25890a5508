// The lengths of chains of entities, kept up to date while entities are declared: what makes the
// chain of one longer is passed on, in a loop, to all that refer to it. Tested by
// tests/parse/EntityNesting_test.cpp, and by tests/growth/Prologs_test.cpp for its cost.

#include <xmldom/parse/EntityChains.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace xmldom {

/// An item in the list of the entities that refer to one.
struct EntityChains::Reference {
  Entity* referrer;
  Reference* next;
};

/// An entity that has been declared or referred to. It is also a node of the Patricia tree of
/// names: all names below branches[0] have a 0 at the bit, those below branches[1] a 1. Along a
/// branch the bits get larger; a branch to a node with the same or a smaller bit leads back up to
/// the node whose name is the only one that can be found there.
struct EntityChains::Entity {
  Entity* before;         // the entity that was made before this one
  Reference* references;  // the entities that refer to this one, the latest first
  Entity* nextRaised;
  bool isRaised;    // this entity is in the list of m_raised
  int chain;        // the length of its chain; -1 until it is declared
  std::size_t bit;  // the bit that its branches differ in, counted from 1; 0 in the root
  Entity* branches[2];
  std::size_t length;  // of its name
  char name[1];        // the first byte; the others follow
};

namespace {

/// A bit of a name, counted from 1. Bit 0 and all bits behind the end of the name are 0, so that a
/// name differs from its prefixes, as names hold no NUL byte.
int BitAt(const char* name, std::size_t length, std::size_t bit) {
  if (bit == 0 || (bit - 1) / 8 >= length) return 0;
  return static_cast<unsigned char>(name[(bit - 1) / 8]) >> (7 - (bit - 1) % 8) & 1;
}

}  // namespace

EntityChains::EntityChains()
    : m_newest(nullptr),
      m_root(nullptr),
      m_current(nullptr),
      m_raised(nullptr),
      m_referring(0),
      m_isExceeded(false) {}

EntityChains::~EntityChains() {
  while (m_newest != nullptr) {
    while (m_newest->references != nullptr) {
      Reference* reference = m_newest->references;
      m_newest->references = reference->next;
      delete reference;
    }
    Entity* before = m_newest->before;
    ::operator delete(m_newest);
    m_newest = before;
  }
}

/// Makes an entity that is not declared yet, and not yet in the tree of names.
EntityChains::Entity* EntityChains::NewEntity(const char* name, std::size_t length) {
  Entity* entity = static_cast<Entity*>(::operator new(sizeof(Entity) + length));
  std::memset(static_cast<void*>(entity), 0, sizeof(Entity));
  std::memcpy(entity->name, name, length);
  entity->length = length;
  entity->chain = -1;
  entity->before = m_newest;
  m_newest = entity;
  return entity;
}

/// Finds the entity of that name, or makes it.
EntityChains::Entity* EntityChains::Find(const char* name, std::size_t length) {
  if (m_root == nullptr) {
    m_root = NewEntity("", 0);
    m_root->branches[0] = m_root;
  }
  Entity* from = m_root;
  Entity* to = m_root->branches[0];
  while (from->bit < to->bit) {
    from = to;
    to = to->branches[BitAt(name, length, to->bit)];
  }
  if (to->length == length && std::memcmp(to->name, name, length) == 0) return to;

  // The new node branches at the first bit in which the two names differ.
  std::size_t bit = 1;
  const std::size_t most = std::min(length, to->length);
  while (bit / 8 < most && name[bit / 8] == to->name[bit / 8]) bit += 8;
  while (BitAt(name, length, bit) == BitAt(to->name, to->length, bit)) ++bit;

  // It is put where the bits on the way down become larger than its own.
  from = m_root;
  to = m_root->branches[0];
  while (from->bit < to->bit && to->bit < bit) {
    from = to;
    to = to->branches[BitAt(name, length, to->bit)];
  }
  Entity* entity = NewEntity(name, length);
  const int side = BitAt(name, length, bit);
  entity->bit = bit;
  entity->branches[side] = entity;
  entity->branches[1 - side] = to;
  from->branches[BitAt(name, length, from->bit)] = entity;
  return entity;
}

void EntityChains::Declare(const char* name, std::size_t length) {
  Entity* entity = Find(name, length);
  m_current = entity->chain < 0 ? entity : nullptr;
  Raise(entity, 0);
}

void EntityChains::Refer(const char* name, std::size_t length) {
  if (m_current == nullptr) return;
  Entity* entity = Find(name, length);
  // No other entity has referred to anything since the current one was declared: if it has referred
  // to this one before, it is the first in the list.
  if (entity->references != nullptr && entity->references->referrer == m_current) return;
  entity->references = new Reference{m_current, entity->references};
  if (entity->chain >= 0) Raise(m_current, entity->chain + 1);
}

/// Makes the chain of an entity at least that long, and then the chains of those that refer to it,
/// directly or through others.
void EntityChains::Raise(Entity* entity, int chain) {
  Lengthen(entity, chain);
  while (m_raised != nullptr) {
    Entity* raised = m_raised;
    m_raised = raised->nextRaised;
    raised->isRaised = false;
    for (Reference* reference = raised->references; reference != nullptr;
         reference = reference->next) {
      Lengthen(reference->referrer, raised->chain + 1);
    }
  }
}

/// Makes the chain of one entity at least that long, and puts the entity into the list of those
/// whose length has to be passed on.
void EntityChains::Lengthen(Entity* entity, int chain) {
  if (entity->chain >= chain || chain > kMost + 1) return;
  if (chain > kMost) m_isExceeded = true;
  if (chain > 0 && entity->chain == 0) ++m_referring;
  entity->chain = chain;
  if (entity->isRaised) return;
  entity->isRaised = true;
  entity->nextRaised = m_raised;
  m_raised = entity;
}

}  // namespace xmldom
