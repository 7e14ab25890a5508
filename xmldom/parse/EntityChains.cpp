#include <xmldom/parse/EntityChains.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace xmldom {

struct EntityChains::Reference {
  Entity* referrer;
  Reference* next;
};

struct EntityChains::Entity {
  Entity* before;         // the one made before this one
  Reference* references;  // to this one
  Entity* nextRaised;
  bool isRaised;
  int chain;        // -1 until it is declared
  std::size_t bit;  // where its two branches differ, from 1; 0 in the root
  Entity* branches[2];
  std::size_t length;
  char name[1];
};

namespace {

/// A bit of a name, counted from 1; behind its end all are 0, as is bit 0.
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

/// The entity of that name, made when there is none.
EntityChains::Entity* EntityChains::Find(const char* name, std::size_t length) {
  if (m_root == nullptr) {
    m_root = NewEntity("", 0);
    m_root->branches[0] = m_root;
  }
  // Bits grow on the way down; a branch to a bit that is no greater leads to the only name that
  // can be this one.
  Entity* from = m_root;
  Entity* to = m_root->branches[0];
  while (from->bit < to->bit) {
    from = to;
    to = to->branches[BitAt(name, length, to->bit)];
  }
  if (to->length == length && std::memcmp(to->name, name, length) == 0) return to;

  std::size_t bit = 1;
  const std::size_t most = std::min(length, to->length);
  while (bit / 8 < most && name[bit / 8] == to->name[bit / 8]) bit += 8;
  while (BitAt(name, length, bit) == BitAt(to->name, to->length, bit)) ++bit;

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
  // Whatever the current entity has referred to has it as its latest referrer.
  if (entity->references != nullptr && entity->references->referrer == m_current) return;
  entity->references = new Reference{m_current, entity->references};
  if (entity->chain >= 0) Raise(m_current, entity->chain + 1);
}

/// Makes the chain of an entity at least so long, and of all whose chain goes through it.
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
