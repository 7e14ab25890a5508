#ifndef XMLDOM_SUPPORT_REFCOUNTEDOBJECT_H
#define XMLDOM_SUPPORT_REFCOUNTEDOBJECT_H

#include <xmldom/base/Export.h>

#include <climits>
#include <cstddef>

/// Base of every object that is handed out by reference.
///
/// References: a new object holds one, owned by its creator. Whoever is handed an object drops its
/// reference with RealRelease() or Release(); the last one destroys the object through its virtual
/// destructor.
/// Threads: counts are plain integers; an object belongs to one thread at a time.
class XMLDOM_API CRefCountedObject {
 public:
  /// With one reference, the creator's.
  CRefCountedObject() : m_nRefCount(1) {}
  virtual ~CRefCountedObject();

  CRefCountedObject(const CRefCountedObject&) = delete;
  CRefCountedObject& operator=(const CRefCountedObject&) = delete;

  /// Adds one reference. Result: the count after the call. A count that has reached INT_MAX stays
  /// there for good: such an object is never destroyed, which is safer than a count that wraps.
  int AddRef() {
    if (m_nRefCount != INT_MAX) ++m_nRefCount;
    return m_nRefCount;
  }

  /// Drops one reference and destroys the object with the last.
  /// Result: the count after the call, 0 after destruction; the object must not be touched then.
  int RealRelease() {
    if (m_nRefCount == INT_MAX) return m_nRefCount;
    const int count = --m_nRefCount;
    if (count == 0) delete this;
    return count;
  }

  /// The count as it is now: for diagnostics.
  int GetRefCount() const { return m_nRefCount; }

  /// The family is allocated with the array form of the global allocator, wherever an object is
  /// made, so that it pairs with the operator delete below.
  static void* operator new(std::size_t size) { return ::operator new[](size); }
  static void operator delete(void* p) { ::operator delete[](p); }

 private:
  int m_nRefCount;
};

#endif
