#ifndef XMLDOM_PTR_XMLPTR_H
#define XMLDOM_PTR_XMLPTR_H

#include <xmldom/ptr/XMLOwner.h>
#include <xmldom/ptr/XMLPtrComparisons.h>

#include <cstddef>
#include <type_traits>

template <class T>
class XMLPtr;

namespace xmldom {

template <class T>
XMLPtr<T> Adopt(T* p) noexcept;
template <class T>
XMLPtr<T> Share(T* p) noexcept;

}  // namespace xmldom

/// Gives an object back by dropping one reference. It is also a deleter for the standard pointers:
/// `std::unique_ptr<IXMLDOMNode, XMLReleaser>`.
struct XMLReleaser {
  /// Drops one reference to `p`, which may be const; null is left alone.
  template <class T>
  static void GiveBack(T* p) noexcept {
    if (p != nullptr) const_cast<typename std::remove_const<T>::type*>(p)->RealRelease();
  }

  /// Does the same.
  template <class T>
  void operator()(T* p) const noexcept {
    GiveBack(p);
  }
};

/// Owns one reference to an object, or none, and drops it at the end: a node, a document, a list, a
/// map, a parse error. It compares, orders and hashes as the plain pointer does.
///
/// Two functions make an XMLPtr of a plain pointer, and their names say what becomes of the
/// reference:
/// * xmldom::Adopt(p) takes over a reference that the caller has already, because a member handed
///   it out or `new` made the object.
/// * xmldom::Share(p) adds a reference, for a pointer that is only borrowed, such as a field of a
///   node.
///
/// Out() is for members that hand out through an out-pointer. An XMLPtr<const T> holds a reference
/// like any other, which is counted although T is const. Some members leave references behind
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

  /// Exchanges what both hold; no reference is counted.
  friend void swap(XMLPtr& a, XMLPtr& b) noexcept { a.Swap(b); }

 private:
  typedef XMLOwner<T, XMLReleaser> Owner;

  template <class U>
  friend XMLPtr<U> xmldom::Adopt(U* p) noexcept;
  template <class U>
  friend XMLPtr<U> xmldom::Share(U* p) noexcept;

  explicit XMLPtr(T* p) noexcept : Owner(p) {}

  static T* AddReference(T* p) noexcept {
    if (p != nullptr) const_cast<typename std::remove_const<T>::type*>(p)->AddRef();
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
  return XMLPtr<T>(XMLPtr<T>::AddReference(p));
}

}  // namespace xmldom

#endif
