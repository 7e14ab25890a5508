#ifndef XMLDOM_PTR_XMLOWNER_H
#define XMLDOM_PTR_XMLOWNER_H

#include <xmldom/base/Export.h>

#include <type_traits>

/// The base of XMLPtr and of the owners of texts. It owns one thing to which a plain pointer
/// points, or nothing. At its end it passes the pointer to `Giver::GiveBack`, which must accept
/// null. Cost: that of a plain pointer.
template <class T, class Giver>
class XMLOwner {
  /// Where a member stores its result. It is a temporary of its own, because compilers take it that
  /// a member may change all of an object when it gets the address of a part.
  struct Slot {
    // Members hand out what is not const, also to an owner of something const.
    typename std::remove_const<T>::type* p = nullptr;
  };

 public:
  class OutPointer;

  XMLOwner(const XMLOwner&) = delete;
  XMLOwner& operator=(const XMLOwner&) = delete;

  /// Result: the pointer, borrowed for as long as this owns the thing; null when nothing is owned.
  T* Get() const noexcept { return m_p; }

  /// Whether anything is owned.
  explicit operator bool() const noexcept { return m_p != nullptr; }

  /// Gives back what is owned, and owns nothing afterwards.
  void Reset() noexcept { Replace(nullptr); }

  /// Passes what is owned to the caller, and owns nothing afterwards. Result: the pointer, or null.
  /// For a member that takes a node over only when it succeeds, pass Get() and call Detach() then:
  /// `if (parent->insertBefore(node.Get(), next, nullptr) == S_OK) node.Detach();`
  T* Detach() noexcept {
    T* p = m_p;
    m_p = nullptr;
    return p;
  }

  /// An argument for the out-pointer of a member that hands something out:
  /// `node->get_nextSibling(next.Out());`
  ///
  /// Ownership: at the end of the full expression, which usually is that of the statement, this
  /// owns what the member has stored, and gives back last what it owned before. Until then it owns
  /// what it owned before. So the call may be made on that object, and may have it as another
  /// argument: `node->get_nextSibling(node.Out());`. But a condition such as
  /// `node->get_nextSibling(node.Out()) == S_OK && node` still tests the former node. When the
  /// member stores nothing, because it fails or throws, nothing is owned afterwards.
  ///
  /// Bad input: do not use it for the out-pointers of appendChild and insertBefore, which receive
  /// the node without a reference, nor for that of replaceChild when a node may be replaced by
  /// itself; all of these may be null. Pass it on at once: a plain `T**` that is made of it is
  /// invalid in the next statement. Leave `result` out.
  OutPointer&& Out(OutPointer&& result = OutPointer(Slot())) noexcept {
    result.m_owner = this;
    return static_cast<OutPointer&&>(result);
  }

  /// Exchanges what both own.
  void Swap(XMLOwner& other) noexcept {
    T* p = m_p;
    m_p = other.m_p;
    other.m_p = p;
  }

 protected:
  /// Takes over the thing to which `p` points; null means nothing.
  explicit XMLOwner(T* p) noexcept : m_p(p) {}
  ~XMLOwner() { Giver::GiveBack(m_p); }

  /// Owns `p` instead. The former thing is given back last, because it may be what keeps the new
  /// one alive.
  void Replace(T* p) noexcept {
    T* old = m_p;
    m_p = p;
    if (old != nullptr) Giver::GiveBack(old);
  }

 private:
  T* m_p;
};

/// What Out() returns: a temporary in the expression of the caller, at whose end it passes on to
/// the owner what a member has stored. It cannot be kept, moved or made in another way, and
/// converts to the pointer that a member expects as a temporary only.
template <class T, class Giver>
class XMLOwner<T, Giver>::OutPointer {
 public:
  OutPointer(const OutPointer&) = delete;
  OutPointer& operator=(const OutPointer&) = delete;

  XMLDOM_ALWAYS_INLINE ~OutPointer() { m_owner->Replace(m_slot->p); }

  /// Where a member stores its result; null stands there until it does.
  operator typename std::remove_const<T>::type **() && noexcept { return &m_slot->p; }

 private:
  friend class XMLOwner;

  explicit OutPointer(Slot&& slot) noexcept : m_owner(nullptr), m_slot(&slot) {}

  XMLOwner* m_owner;
  Slot* m_slot;
};

#endif
