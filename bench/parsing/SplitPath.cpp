#include "parsing/SplitPath.h"

#include <cstring>

namespace bench {

SplitPath::SplitPath(const char* path) : isDescendant(std::strncmp(path, "//", 2) == 0) {
  const char* rest = path + (isDescendant ? 2 : 1);
  for (;;) {
    const std::size_t length = std::strcspn(rest, "/[");
    names.emplace_back(rest, length);
    rest += length;
    if (*rest != '/') break;
    ++rest;
  }
  if (*rest != '[') return;
  rest += std::strlen("[@");
  const std::size_t length = std::strcspn(rest, "=");
  attribute.assign(rest, length);
  rest += length + std::strlen("='");
  value.assign(rest, std::strcspn(rest, "'"));
}

}  // namespace bench
