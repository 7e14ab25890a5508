#include "harness/HugeText.h"

#include <sys/mman.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <string>

namespace {

const std::size_t kPieceSize = 1 << 20;
const std::size_t kTerminatorSize = 1;

/// Result: null when there is no room.
char* Map(char* where, std::size_t size, int flags, int file) {
  void* mapped = mmap(where, size, PROT_READ, flags, file, 0);
  return mapped == MAP_FAILED ? nullptr : static_cast<char*>(mapped);
}

}  // namespace

HugeText::HugeText() : m_size(static_cast<std::size_t>(INT_MAX) + 1) {
  char name[] = "/tmp/xmldom-text-XXXXXX";
  const int file = mkstemp(name);
  if (file < 0) std::abort();
  unlink(name);
  const std::string piece(kPieceSize, ' ');
  if (write(file, piece.data(), piece.size()) != static_cast<ssize_t>(piece.size())) std::abort();
  m_text = Map(nullptr, m_size + kTerminatorSize, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1);
  for (std::size_t offset = 0; m_text != nullptr && offset < m_size; offset += kPieceSize) {
    if (Map(m_text + offset, kPieceSize, MAP_SHARED | MAP_FIXED, file) == nullptr) std::abort();
  }
  close(file);
}

HugeText::~HugeText() {
  if (m_text != nullptr) munmap(m_text, m_size + kTerminatorSize);
}
