#ifndef XMLDOM_BASE_STACK_H
#define XMLDOM_BASE_STACK_H

#include <cstddef>
#include <cstdlib>
#include <type_traits>

namespace xmldom {

/// Doubles the memory of a stack. Result: its items, moved off the heap block or the place `onSpot`
/// that they were in; `*capacity` counts items. Effects: std::bad_alloc when memory is out, with
/// nothing changed.
void* GrowStack(void* items, const void* onSpot, std::size_t* capacity, std::size_t itemSize);

/// A stack of plain data: on the spot for the first items, then on the heap.
template <class T, std::size_t kOnSpot>
class Stack {
 public:
  Stack() : m_items(m_onSpot), m_size(0), m_capacity(kOnSpot) {}
  ~Stack() {
    if (m_items != m_onSpot) std::free(m_items);
  }

  Stack(const Stack&) = delete;
  Stack& operator=(const Stack&) = delete;

  /// Effects: std::bad_alloc when memory is out.
  void Push(const T& item) {
    if (m_size == m_capacity) {
      m_items = static_cast<T*>(GrowStack(m_items, m_onSpot, &m_capacity, sizeof(T)));
    }
    m_items[m_size++] = item;
  }

  T& Top() { return m_items[m_size - 1]; }
  T Pop() { return m_items[--m_size]; }

  bool IsEmpty() const { return m_size == 0; }
  std::size_t Size() const { return m_size; }

 private:
  static_assert(std::is_trivially_copyable<T>::value, "items are moved as bytes");

  T* m_items;
  std::size_t m_size;
  std::size_t m_capacity;
  T m_onSpot[kOnSpot];
};

}  // namespace xmldom

#endif
