#include <xmldom/base/Stack.h>

#include <cstdint>
#include <cstring>
#include <new>

namespace xmldom {

void* GrowStack(void* items, const void* onSpot, std::size_t* capacity, std::size_t itemSize) {
  const std::size_t size = *capacity * itemSize;
  if (size > SIZE_MAX / 2) throw std::bad_alloc();
  const bool isOnSpot = items == onSpot;
  void* grown = std::realloc(isOnSpot ? nullptr : items, 2 * size);
  if (grown == nullptr) throw std::bad_alloc();
  if (isOnSpot) std::memcpy(grown, onSpot, size);
  *capacity *= 2;
  return grown;
}

}  // namespace xmldom
