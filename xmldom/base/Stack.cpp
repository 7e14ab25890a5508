// The growing of stacks, which is the same for all types of items, because items are moved as
// bytes. Tested by tests/growth/Growth_test.cpp and tests/failure/Reading_test.cpp, by way of deep
// trees, because it is not exported.

#include <xmldom/base/Stack.h>

#include <cstdint>
#include <cstring>
#include <new>

namespace xmldom {

void* GrowStack(void* items, const void* inlineItems, std::size_t* capacity, std::size_t itemSize) {
  const std::size_t size = *capacity * itemSize;
  if (size > SIZE_MAX / 2) throw std::bad_alloc();
  const bool isInline = items == inlineItems;
  void* grown = std::realloc(isInline ? nullptr : items, 2 * size);
  if (grown == nullptr) throw std::bad_alloc();
  if (isInline) std::memcpy(grown, inlineItems, size);
  *capacity *= 2;
  return grown;
}

}  // namespace xmldom
