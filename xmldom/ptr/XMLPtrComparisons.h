#ifndef XMLDOM_PTR_XMLPTRCOMPARISONS_H
#define XMLDOM_PTR_XMLPTRCOMPARISONS_H

// Comparisons of the class XMLPtr, and its hash: those of the plain pointers. XMLPtr.h includes
// this.

#include <cstddef>
#include <functional>
#include <type_traits>

template <class T>
class XMLPtr;

namespace xmldom {

/// Whether the address `a` comes before `b` in one order of all addresses.
template <class T, class U>
bool IsAddressBefore(T* a, U* b) noexcept {
  return std::less<typename std::common_type<T*, U*>::type>()(a, b);
}

}  // namespace xmldom

/// Whether both point to the same object, or neither to any. Plain pointers and null can be
/// compared too, here and below.
template <class T, class U>
bool operator==(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return a.Get() == b.Get();
}
template <class T, class U>
bool operator==(const XMLPtr<T>& a, U* b) noexcept {
  return a.Get() == b;
}
template <class T, class U>
bool operator==(T* a, const XMLPtr<U>& b) noexcept {
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
bool operator!=(const XMLPtr<T>& a, U* b) noexcept {
  return a.Get() != b;
}
template <class T, class U>
bool operator!=(T* a, const XMLPtr<U>& b) noexcept {
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

/// Orders by address, for sets and maps. Nothing comes before everything else.
template <class T, class U>
bool operator<(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return xmldom::IsAddressBefore(a.Get(), b.Get());
}
template <class T, class U>
bool operator<(const XMLPtr<T>& a, U* b) noexcept {
  return xmldom::IsAddressBefore(a.Get(), b);
}
template <class T, class U>
bool operator<(T* a, const XMLPtr<U>& b) noexcept {
  return xmldom::IsAddressBefore(a, b.Get());
}

/// Whether the first comes behind the second, by address.
template <class T, class U>
bool operator>(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return xmldom::IsAddressBefore(b.Get(), a.Get());
}
template <class T, class U>
bool operator>(const XMLPtr<T>& a, U* b) noexcept {
  return xmldom::IsAddressBefore(b, a.Get());
}
template <class T, class U>
bool operator>(T* a, const XMLPtr<U>& b) noexcept {
  return xmldom::IsAddressBefore(b.Get(), a);
}

/// Whether the first does not come behind the second, by address.
template <class T, class U>
bool operator<=(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return !xmldom::IsAddressBefore(b.Get(), a.Get());
}
template <class T, class U>
bool operator<=(const XMLPtr<T>& a, U* b) noexcept {
  return !xmldom::IsAddressBefore(b, a.Get());
}
template <class T, class U>
bool operator<=(T* a, const XMLPtr<U>& b) noexcept {
  return !xmldom::IsAddressBefore(b.Get(), a);
}

/// Whether the first does not come before the second, by address.
template <class T, class U>
bool operator>=(const XMLPtr<T>& a, const XMLPtr<U>& b) noexcept {
  return !xmldom::IsAddressBefore(a.Get(), b.Get());
}
template <class T, class U>
bool operator>=(const XMLPtr<T>& a, U* b) noexcept {
  return !xmldom::IsAddressBefore(a.Get(), b);
}
template <class T, class U>
bool operator>=(T* a, const XMLPtr<U>& b) noexcept {
  return !xmldom::IsAddressBefore(a, b.Get());
}

namespace std {

/// For unordered containers.
template <class T>
struct hash<XMLPtr<T>> {
  /// The hash of the plain pointer.
  size_t operator()(const XMLPtr<T>& p) const noexcept { return hash<T*>()(p.Get()); }
};

}  // namespace std

#endif
