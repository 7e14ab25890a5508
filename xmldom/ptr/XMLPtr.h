#ifndef XMLDOM_PTR_XMLPTR_H
#define XMLDOM_PTR_XMLPTR_H

#include <xmldom/ptr/XMLOwner.h>

#include <cstddef>
#include <functional>
#include <type_traits>

/// Gives an object back by dropping one reference.
struct XMLReleaser {
  /// Null is left alone.
  template <class T>
  static void GiveBack(T* p) noexcept {
    if (p != nullptr) p->RealRelease();
  }
};

/// Owns one reference to an object, or none, and drops it at the end: a node, a document, a list, a
/// map, a parse error.
///
/// Two functions make one of a plain pointer, and say what becomes of its reference:
/// * Adopt(p) takes over a reference that is the caller's already: what a member hands out, or what
///   `new` made.
/// * Share(p) adds one of its own: for a pointer that was lent, such as a field of the record.
/// Out() serves the members that hand out through an out-pointer. The references that some members
/// leave behind (see "Deliberate" in their comments) belong to nobody, and so to no XMLPtr either.
///
/// Cost: that of a plain pointer; AddRef and RealRelease are called where a caller would call them,
/// and moving calls neither.
/// Threads: like the object, one thread at a time.
template <class T>
class XMLPtr : public XMLOwner<T, XMLReleaser> {
 public:
  /// Owns nothing.
  XMLPtr() noexcept : Owner(nullptr) {}
  XMLPtr(std::nullptr_t) noexcept : Owner(nullptr) {}

  /// A copy adds a reference of its own; a move leaves `other` with none. Both also make a pointer
  /// to a base class of one to a derived class.
  XMLPtr(const XMLPtr& other) noexcept : Owner(AddReference(other.Get())) {}
  XMLPtr(XMLPtr&& other) noexcept : Owner(other.Detach()) {}
  template <class U, typename std::enable_if<std::is_convertible<U*, T*>::value, int>::type = 0>
  XMLPtr(const XMLPtr<U>& other) noexcept : Owner(AddReference(other.Get())) {}
  template <class U, typename std::enable_if<std::is_convertible<U*, T*>::value, int>::type = 0>
  XMLPtr(XMLPtr<U>&& other) noexcept : Owner(other.Detach()) {}

  /// What was held is released last, so that assigning to itself, or what hangs below it, is safe.
  XMLPtr& operator=(const XMLPtr& other) noexcept {
    this->Replace(AddReference(other.Get()));
    return *this;
  }
  XMLPtr& operator=(XMLPtr&& other) noexcept {
    this->Replace(other.Detach());
    return *this;
  }

  /// The object. Bad input: null is not tested; a member that asserts does so.
  T* operator->() const noexcept { return this->Get(); }
  T& operator*() const noexcept { return *this->Get(); }

 private:
  typedef XMLOwner<T, XMLReleaser> Owner;

  template <class U>
  friend XMLPtr<U> Adopt(U* p) noexcept;

  explicit XMLPtr(T* p) noexcept : Owner(p) {}

  static T* AddReference(T* p) noexcept {
    if (p != nullptr) p->AddRef();
    return p;
  }
};

/// Takes over a reference that is the caller's; null gives a pointer that holds nothing.
/// `XMLPtr<IXMLDOMNode> port = Adopt(document->SelectSingleNode("//port"));`
template <class T>
XMLPtr<T> Adopt(T* p) noexcept {
  return XMLPtr<T>(p);
}

/// Adds a reference to an object that was lent; null gives a pointer that holds nothing.
/// `XMLPtr<IXMLDOMNode> parent = Share(port->m_pParent);`
template <class T>
XMLPtr<T> Share(T* p) noexcept {
  if (p != nullptr) p->AddRef();
  return Adopt(p);
}

/// Equal are pointers to the same object, plain ones too, and all that hold none.
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

/// The contrary of ==.
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

/// An order for sets and maps, by address.
template <class T>
bool operator<(const XMLPtr<T>& a, const XMLPtr<T>& b) noexcept {
  return std::less<T*>()(a.Get(), b.Get());
}

#endif
