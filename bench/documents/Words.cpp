#include "documents/Words.h"

namespace bench {

std::string Words::Word() {
  static const char* const words[] = {
      "anchor", "basket", "copper",  "dune",    "ember", "furrow", "gate", "harbour",
      "island", "jetty",  "kestrel", "lantern", "moor",  "needle", "oak",  "pebble",
      "quarry", "reed",   "sluice",  "thicket", "umber", "valley", "weir", "yard",
  };
  return OneOf(words);
}

std::string Words::Line(std::size_t count) {
  std::string line = Word();
  for (; count > 1; --count) line += ' ' + Word();
  return line;
}

}  // namespace bench
