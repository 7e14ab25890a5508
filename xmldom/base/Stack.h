#ifndef XMLDOM_BASE_STACK_H
#define XMLDOM_BASE_STACK_H

#include <cstddef>
#include <cstdlib>
#include <type_traits>

namespace xmldom {

/// Doubles the memory of a stack. `items` points to its items: before the first call that is
/// `inlineItems`, and afterwards a block on the heap. `*capacity` is a number of items.
/// Result: a block on the heap that holds the items; the former one is freed.
/// Effects: std::bad_alloc when memory is out, and nothing is changed.
void* GrowStack(void* items, const void* inlineItems, std::size_t* capacity, std::size_t itemSize);

/// A stack of plain data. The first kInline items are stored in the object itself; when there are
/// more, all items are moved to a block on the heap.
template <class T, std::size_t kInline>
class Stack {
 public:
  Stack() : m_items(m_inlineItems), m_size(0), m_capacity(kInline) {}
  ~Stack() {
    if (m_items != m_inlineItems) std::free(m_items);
  }

  Stack(const Stack&) = delete;
  Stack& operator=(const Stack&) = delete;

  /// Effects: std::bad_alloc when memory is out, and the stack is unchanged.
  void Push(const T& item) {
    if (m_size == m_capacity) {
      m_items = static_cast<T*>(GrowStack(m_items, m_inlineItems, &m_capacity, sizeof(T)));
    }
    m_items[m_size++] = item;
  }

  /// The last item, which must exist.
  T& Top() { return m_items[m_size - 1]; }
  T Pop() { return m_items[--m_size]; }

  /// The items, the first one first. Valid until the next Push.
  const T* Items() const { return m_items; }
  T* Items() { return m_items; }

  bool IsEmpty() const { return m_size == 0; }
  std::size_t Size() const { return m_size; }

 private:
  static_assert(std::is_trivially_copyable<T>::value, "items are moved as bytes");

  T* m_items;
  std::size_t m_size;
  std::size_t m_capacity;
  T m_inlineItems[kInline];
};

}  // namespace xmldom

#endif
