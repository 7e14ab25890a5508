#ifndef XMLDOM_SUPPORT_REFCOUNTEDOBJECT_H
#define XMLDOM_SUPPORT_REFCOUNTEDOBJECT_H

#include <xmldom/base/Export.h>

#include <climits>
#include <cstddef>

/// Base of every object that is handed out by reference.
///
/// Ownership: a new object has one reference, which belongs to its creator. Whoever gets an object
/// with a reference drops that with RealRelease() or Release(). When the last reference is dropped,
/// the object is destroyed through its virtual destructor. Threads: counts are plain integers; one
/// thread at a time uses an object.
class XMLDOM_API CRefCountedObject {
 public:
  /// Makes an object with one reference, the creator's.
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

  /// Drops one reference, and destroys the object when it was the last.
  /// Result: the count after the call. It is 0 when the object has been destroyed, which must not
  /// be used any more then.
  int RealRelease() {
    if (m_nRefCount == INT_MAX) return m_nRefCount;
    const int count = --m_nRefCount;
    if (count == 0) delete this;
    return count;
  }

  /// Result: the count as it is now, for diagnostics.
  int GetRefCount() const { return m_nRefCount; }

  /// Objects of all derived classes are allocated and freed with the array form of the global
  /// allocator, wherever they are made, so that the two always match.
  static void* operator new(std::size_t size) { return ::operator new[](size); }
  static void operator delete(void* p) { ::operator delete[](p); }

 private:
  int m_nRefCount;
};

#endif
