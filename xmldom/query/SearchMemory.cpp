// A hash table with open addressing and linear probing, of which at most half the slots are used.
// Nothing is ever removed. Tested, through paths with dots, by
// tests/query/SingleNodeSearchDots_test.cpp.

#include <xmldom/query/SearchMemory.h>

#include <xmldom/base/WrapAround.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdlib>
#include <new>

namespace xmldom {

namespace {

const std::size_t kFirstCapacity = 64;

/// The addresses of nodes differ in a few middle bits. The product spreads these to the upper half,
/// and the shift brings them to the lowest bits, which choose the slot.
XMLDOM_WRAPS_AROUND std::size_t Hash(IXMLDOMNode* node, int step) {
  const std::size_t factor = static_cast<std::size_t>(0x9E3779B97F4A7C15ull);
  const std::size_t key = reinterpret_cast<std::size_t>(node) / alignof(IXMLDOMNode) +
                          static_cast<std::size_t>(step) * 0x85EBCA6Bu;
  const std::size_t product = key * factor;
  return product ^ (product >> (sizeof product * 4));
}

}  // namespace

SearchMemory::~SearchMemory() { std::free(m_records); }

SearchRecord& SearchMemory::At(IXMLDOMNode* node, int step) {
  if (m_size * 2 >= m_capacity) Grow();
  SearchRecord* record = Slot(node, step);
  if (record->node == nullptr) {
    ++m_size;
    record->node = node;
    record->step = step;
    record->unreached = node->m_pFirstChild;
  }
  return *record;
}

/// The slot of a record, or the free slot that it would get. There is always a free slot.
SearchRecord* SearchMemory::Slot(IXMLDOMNode* node, int step) const {
  const std::size_t mask = m_capacity - 1;
  std::size_t i = Hash(node, step) & mask;
  while (m_records[i].node != nullptr && (m_records[i].node != node || m_records[i].step != step)) {
    i = (i + 1) & mask;
  }
  return m_records + i;
}

void SearchMemory::Grow() {
  SearchRecord* const old = m_records;
  const std::size_t oldCapacity = m_capacity;
  const std::size_t capacity = oldCapacity == 0 ? kFirstCapacity : 2 * oldCapacity;
  SearchRecord* grown = static_cast<SearchRecord*>(std::calloc(capacity, sizeof(SearchRecord)));
  if (grown == nullptr) throw std::bad_alloc();
  m_records = grown;
  m_capacity = capacity;
  for (std::size_t i = 0; i < oldCapacity; ++i) {
    if (old[i].node != nullptr) *Slot(old[i].node, old[i].step) = old[i];
  }
  std::free(old);
}

}  // namespace xmldom
