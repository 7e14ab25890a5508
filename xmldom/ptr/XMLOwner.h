#ifndef XMLDOM_PTR_XMLOWNER_H
#define XMLDOM_PTR_XMLOWNER_H

/// What XMLPtr and the owners of texts have in common: each owns one thing that a plain pointer
/// stands for, or none, and gives it back at the end with `Giver::GiveBack`, which leaves null
/// alone.
/// Cost: that of a plain pointer.
template <class T, class Giver>
class XMLOwner {
 public:
  XMLOwner(const XMLOwner&) = delete;
  XMLOwner& operator=(const XMLOwner&) = delete;

  /// What is owned, borrowed for as long as this owns it; null when there is nothing.
  T* Get() const noexcept { return m_p; }

  /// Whether anything is owned.
  explicit operator bool() const noexcept { return m_p != nullptr; }

  /// Gives back what is owned.
  void Reset() noexcept { Replace(nullptr); }

  /// Hands what is owned to the caller, and owns nothing then. Result: the pointer, or null.
  /// A member that takes a node over only when it succeeds is given Get() first:
  /// `if (parent->insertBefore(node.Get(), next, nullptr) == S_OK) node.Detach();`
  T* Detach() noexcept {
    T* p = m_p;
    m_p = nullptr;
    return p;
  }

  /// For a member that hands out through an out-pointer: gives back what is owned first, and owns
  /// what the member stores. A member that fails and stores nothing leaves it null.
  /// Bad input: not for the out-pointers of appendChild and insertBefore, which lend the node, nor
  /// for that of a replaceChild that may be given the same node twice (all of them may be null);
  /// nor on the pointer that gives another argument of the same call.
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
  /// Owns what `p` stands for; null is nothing.
  explicit XMLOwner(T* p) noexcept : m_p(p) {}
  ~XMLOwner() { Giver::GiveBack(m_p); }

  /// Gives the old thing back last, because it may be what keeps the new one.
  void Replace(T* p) noexcept {
    T* old = m_p;
    m_p = p;
    if (old != nullptr) Giver::GiveBack(old);
  }

 private:
  T* m_p;
};

#endif
