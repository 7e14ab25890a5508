#ifndef XMLDOM_TOOLS_DOCUMENT_SPACEATTRIBUTE_H
#define XMLDOM_TOOLS_DOCUMENT_SPACEATTRIBUTE_H

#include <cstring>

namespace tool {

/// Whether white space in an element is to be kept: what its attribute xml:space says, or, where it
/// has none, what holds around it. `attributes` are those that Expat reports for its start tag.
inline bool KeepsSpace(const char** attributes, bool keepsAround) {
  for (; *attributes != nullptr; attributes += 2) {
    if (std::strcmp(attributes[0], "xml:space") == 0) {
      return std::strcmp(attributes[1], "preserve") == 0;
    }
  }
  return keepsAround;
}

}  // namespace tool

#endif
