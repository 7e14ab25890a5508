#include "harness/Allocation.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

enum Form { PLAIN = 0x504c4149, ARRAY = 0x41525259 };

// In front of every block stands the form that it was made with.
const std::size_t kHeaderSize = alignof(std::max_align_t);
static_assert(sizeof(Form) <= kHeaderSize, "the form must fit the header");

const int kUnlimited = -1;
int l_nAllowed = kUnlimited;
bool l_bOnce = false;
bool l_bHasStruck = false;

void* Allocate(std::size_t size, Form form) {
  if (l_nAllowed == 0 || size > SIZE_MAX - kHeaderSize) {
    l_bHasStruck = true;
    if (l_bOnce) l_nAllowed = kUnlimited;
    throw std::bad_alloc();
  }
  if (l_nAllowed > 0) --l_nAllowed;
  void* block = std::malloc(kHeaderSize + size);
  if (block == nullptr) throw std::bad_alloc();
  *static_cast<Form*>(block) = form;
  return static_cast<char*>(block) + kHeaderSize;
}

void Deallocate(void* p, Form form) {
  if (p == nullptr) return;
  void* block = static_cast<char*>(p) - kHeaderSize;
  if (*static_cast<Form*>(block) != form) {
    std::fputs("memory is freed in another form than it was allocated in\n", stderr);
    std::abort();
  }
  std::free(block);
}

}  // namespace

OutOfMemory::OutOfMemory(int allowed, bool once) : m_allowed(allowed) {
  l_nAllowed = allowed;
  l_bOnce = once;
  l_bHasStruck = false;
}

OutOfMemory::~OutOfMemory() { l_nAllowed = kUnlimited; }

bool OutOfMemory::HasStruck() const { return l_bHasStruck; }

int OutOfMemory::Succeeded() const { return m_allowed - l_nAllowed; }

void* operator new(std::size_t size) { return Allocate(size, PLAIN); }
void* operator new[](std::size_t size) { return Allocate(size, ARRAY); }
void operator delete(void* p) noexcept { Deallocate(p, PLAIN); }
void operator delete[](void* p) noexcept { Deallocate(p, ARRAY); }
void operator delete(void* p, std::size_t) noexcept { Deallocate(p, PLAIN); }
void operator delete[](void* p, std::size_t) noexcept { Deallocate(p, ARRAY); }
