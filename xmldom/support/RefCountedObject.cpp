#include <xmldom/support/RefCountedObject.h>

CRefCountedObject::~CRefCountedObject() {}

int CRefCountedObject::RealRelease() {
  if (m_nRefCount == INT_MAX) return m_nRefCount;
  const int count = --m_nRefCount;
  if (count == 0) delete this;
  return count;
}
