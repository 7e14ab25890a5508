#ifndef XMLDOM_TOOLS_OWNED_H
#define XMLDOM_TOOLS_OWNED_H

#include <memory>

namespace tool {

struct DropReference {
  template <class T>
  void operator()(T* object) const {
    object->RealRelease();
  }
};

/// Holds one reference to an object of the library and drops it at the end.
template <class T>
using Owned = std::unique_ptr<T, DropReference>;

}  // namespace tool

#endif
