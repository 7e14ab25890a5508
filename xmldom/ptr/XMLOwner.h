#ifndef XMLDOM_PTR_XMLOWNER_H
#define XMLDOM_PTR_XMLOWNER_H

/// The base of XMLPtr and of the owners of texts. It owns one thing to which a plain pointer
/// points, or nothing. At its end it passes the pointer to `Giver::GiveBack`, which must accept
/// null. Cost: that of a plain pointer.
template <class T, class Giver>
class XMLOwner {
 public:
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

  /// For a member that hands something out through an out-pointer: gives back what is owned, and
  /// owns what the member stores. When the member stores nothing, nothing is owned. Bad input: do
  /// not use it for the out-pointers of appendChild and insertBefore, which receive the node
  /// without a reference, nor for that of replaceChild when a node may be replaced by itself; all
  /// of these may be null. Do not use it on an object whose pointer is another argument of the
  /// call.
  T** Out() noexcept {
    Reset();
    return &m_p;
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

#endif
