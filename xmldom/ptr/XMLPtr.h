#ifndef XMLDOM_PTR_XMLPTR_H
#define XMLDOM_PTR_XMLPTR_H

#include <xmldom/ptr/XMLOwner.h>

#include <cstddef>
#include <functional>
#include <type_traits>

template <class T>
class XMLPtr;

namespace xmldom {

template <class T>
XMLPtr<T> Adopt(T* p) noexcept;

}  // namespace xmldom

/// Gives an object back by dropping one reference.
struct XMLReleaser {
  /// Drops one reference to `p`; null is left alone.
  template <class T>
  static void GiveBack(T* p) noexcept {
    if (p != nullptr) p->RealRelease();
  }
};

/// Owns one reference to an object, or none, and drops it at the end: a node, a document, a list, a
/// map, a parse error.
///
/// Two functions make an XMLPtr of a plain pointer, and their names say what becomes of the
/// reference:
/// * xmldom::Adopt(p) takes over a reference that the caller has already, because a member handed
///   it out or `new` made the object.
/// * xmldom::Share(p) adds a reference, for a pointer that is only borrowed, such as a field of a
///   node.
///
/// Out() is for members that hand out through an out-pointer. Some members leave references behind
/// that nobody drops (see "Deliberate" in their comments); an XMLPtr does not drop these either.
///
/// Cost: that of a plain pointer, with AddRef and RealRelease called where a caller would call
/// them; moving calls neither. Threads: one thread at a time, as for the object itself.
template <class T>
class XMLPtr : public XMLOwner<T, XMLReleaser> {
 public:
  /// Owns nothing.
  XMLPtr() noexcept : Owner(nullptr) {}
  XMLPtr(std::nullptr_t) noexcept : Owner(nullptr) {}

  /// A copy adds a reference; a move takes over that of `other`, which then owns nothing. Both also
  /// convert a pointer to a derived class into one to its base class.
  XMLPtr(const XMLPtr& other) noexcept : Owner(AddReference(other.Get())) {}
  XMLPtr(XMLPtr&& other) noexcept : Owner(other.Detach()) {}
  template <class U, typename std::enable_if<std::is_convertible<U*, T*>::value, int>::type = 0>
  XMLPtr(const XMLPtr<U>& other) noexcept : Owner(AddReference(other.Get())) {}
  template <class U, typename std::enable_if<std::is_convertible<U*, T*>::value, int>::type = 0>
  XMLPtr(XMLPtr<U>&& other) noexcept : Owner(other.Detach()) {}

  /// What was owned is released last. So an XMLPtr may be assigned to itself, and a node may be
  /// assigned in place of one that keeps it alive.
  XMLPtr& operator=(const XMLPtr& other) noexcept {
    this->Replace(AddReference(other.Get()));
    return *this;
  }
  XMLPtr& operator=(XMLPtr&& other) noexcept {
    this->Replace(other.Detach());
    return *this;
  }

  /// The object. Bad input: it is not tested whether there is one.
  T* operator->() const noexcept { return this->Get(); }
  T& operator*() const noexcept { return *this->Get(); }

 private:
  typedef XMLOwner<T, XMLReleaser> Owner;

  template <class U>
  friend XMLPtr<U> xmldom::Adopt(U* p) noexcept;

  explicit XMLPtr(T* p) noexcept : Owner(p) {}

  static T* AddReference(T* p) noexcept {
    if (p != nullptr) p->AddRef();
    return p;
  }
};

namespace xmldom {

/// Takes over a reference that the caller has; null gives an XMLPtr that owns nothing.
/// `XMLPtr<IXMLDOMNode> port = xmldom::Adopt(document->SelectSingleNode("//port"));`
template <class T>
XMLPtr<T> Adopt(T* p) noexcept {
  return XMLPtr<T>(p);
}

/// Adds a reference to an object that is only borrowed; null gives an XMLPtr that owns nothing.
/// `XMLPtr<IXMLDOMNode> parent = xmldom::Share(port->m_pParent);`
template <class T>
XMLPtr<T> Share(T* p) noexcept {
  if (p != nullptr) p->AddRef();
  return xmldom::Adopt(p);
}

}  // namespace xmldom

/// Whether both point to the same object, or neither to any. Plain pointers can be compared too.
template <class T, class U>
bool operator==(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return a.Get() == b.Get();
}
template <class T, class U>
bool operator==(const XMLPtr<T>& a, const U* b) noexcept {
  return a.Get() == b;
}
template <class T, class U>
bool operator==(const T* a, const XMLPtr<U>& b) noexcept {
  return a == b.Get();
}
template <class T>
bool operator==(const XMLPtr<T>& a, std::nullptr_t) noexcept {
  return a.Get() == nullptr;
}
template <class T>
bool operator==(std::nullptr_t, const XMLPtr<T>& a) noexcept {
  return a.Get() == nullptr;
}

/// Whether they point to different objects.
template <class T, class U>
bool operator!=(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return a.Get() != b.Get();
}
template <class T, class U>
bool operator!=(const XMLPtr<T>& a, const U* b) noexcept {
  return a.Get() != b;
}
template <class T, class U>
bool operator!=(const T* a, const XMLPtr<U>& b) noexcept {
  return a != b.Get();
}
template <class T>
bool operator!=(const XMLPtr<T>& a, std::nullptr_t) noexcept {
  return a.Get() != nullptr;
}
template <class T>
bool operator!=(std::nullptr_t, const XMLPtr<T>& a) noexcept {
  return a.Get() != nullptr;
}

/// Orders by address, for sets and maps.
template <class T>
bool operator<(const XMLPtr<T>& a, const XMLPtr<T>& b) noexcept {
  return std::less<T*>()(a.Get(), b.Get());
}

#endif
