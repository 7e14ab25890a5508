#ifndef XMLDOM_DOM_RELEASE_H
#define XMLDOM_DOM_RELEASE_H

/// Drops the reference that the caller holds through `p`, and sets `p` to null. A null pointer is
/// left alone.
template <class T>
void Release(T*& p) {
  if (p != nullptr) {
    p->RealRelease();
    p = nullptr;
  }
}

#endif
