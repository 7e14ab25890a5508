#ifndef XMLDOM_DOM_RELEASE_H
#define XMLDOM_DOM_RELEASE_H

/// Drops the reference that `p` holds and nulls `p`; a null pointer is left alone.
template <class T>
void Release(T*& p) {
  if (p != nullptr) {
    p->RealRelease();
    p = nullptr;
  }
}

#endif
