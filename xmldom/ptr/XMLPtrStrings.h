#ifndef XMLDOM_PTR_XMLPTRSTRINGS_H
#define XMLDOM_PTR_XMLPTRSTRINGS_H

#include <xmldom/ptr/XMLOwner.h>
#include <xmldom/support/bstr.h>

#include <cstdlib>
#include <cstring>
#include <string>

template <class Giver>
class XMLString;
struct XMLBstrFreer;
struct XMLHeapFreer;

/// Owns a BSTR. Unlike a _bstr_t it is never copied by accident, and it can be passed to
/// out-pointers. `XMLBstr xml = xmldom::AdoptBstr(document->GetXML());`
typedef XMLString<XMLBstrFreer> XMLBstr;

/// Owns a text on the C heap.
/// `XMLHeapStr text = xmldom::AdoptHeapStr(node->GetTextAsStr());`
typedef XMLString<XMLHeapFreer> XMLHeapStr;

namespace xmldom {

// The compiler cannot tell the two kinds of text apart, because both are a char*. So each has a
// function of its own, whose name says the kind; the result fits the owner of that kind only.

/// Takes over a BSTR that the caller owns, which SysFreeString has to free. Null means none.
XMLBstr AdoptBstr(BSTR text) noexcept;

/// Takes over a text on the C heap that the caller owns, which `free` has to free. Null means none.
XMLHeapStr AdoptHeapStr(char* text) noexcept;

}  // namespace xmldom

/// Owns one text that a member has handed out, or none, and frees it at the end. There are two
/// kinds, XMLBstr and XMLHeapStr, and the comment of a member says which kind it hands out. A text
/// can be moved, but not copied; it converts to a std::string, which is a copy, and compares with
/// texts of every kind.
template <class Giver>
class XMLString : public XMLOwner<char, Giver> {
 public:
  /// Owns nothing.
  XMLString() noexcept : Owner(nullptr) {}
  /// Takes over what `other` owns; what was owned is given back last.
  XMLString(XMLString&& other) noexcept : Owner(other.Detach()) {}
  XMLString& operator=(XMLString&& other) noexcept {
    this->Replace(other.Detach());
    return *this;
  }

  /// Result: the text, borrowed for as long as this owns it; an empty text, never null, when there
  /// is none.
  const char* c_str() const noexcept { return this->Get() != nullptr ? this->Get() : ""; }

  /// A copy of the text; an empty one when there is none. Effects: std::bad_alloc when memory is
  /// out.
  operator std::string() const { return c_str(); }

  /// Exchanges what both own.
  friend void swap(XMLString& a, XMLString& b) noexcept { a.Swap(b); }

 private:
  typedef XMLOwner<char, Giver> Owner;

  friend XMLBstr xmldom::AdoptBstr(BSTR text) noexcept;
  friend XMLHeapStr xmldom::AdoptHeapStr(char* text) noexcept;

  explicit XMLString(char* text) noexcept : Owner(text) {}
};

/// Gives a BSTR back; null is left alone.
struct XMLBstrFreer {
  /// Frees it.
  static void GiveBack(BSTR text) noexcept { SysFreeString(text); }
};

/// Gives a text on the C heap back; null is left alone.
struct XMLHeapFreer {
  /// Frees it.
  static void GiveBack(char* text) noexcept { std::free(text); }
};

inline XMLBstr xmldom::AdoptBstr(BSTR text) noexcept { return XMLBstr(text); }

inline XMLHeapStr xmldom::AdoptHeapStr(char* text) noexcept { return XMLHeapStr(text); }

/// Whether two texts have the same bytes. An owner of nothing has an empty text. Cost: linear in
/// the texts.
template <class Giver, class OtherGiver>
bool operator==(const XMLString<Giver>& a, const XMLString<OtherGiver>& b) noexcept {
  return std::strcmp(a.c_str(), b.c_str()) == 0;
}
template <class Giver>
bool operator==(const XMLString<Giver>& a, const std::string& b) noexcept {
  return b.compare(a.c_str()) == 0;
}
template <class Giver>
bool operator==(const std::string& a, const XMLString<Giver>& b) noexcept {
  return b == a;
}
/// The same; a null `b` is equal to an owner of nothing only.
template <class Giver>
bool operator==(const XMLString<Giver>& a, const char* b) noexcept {
  return b != nullptr ? std::strcmp(a.c_str(), b) == 0 : a.Get() == nullptr;
}
template <class Giver>
bool operator==(const char* a, const XMLString<Giver>& b) noexcept {
  return b == a;
}

/// Whether two texts differ.
template <class Giver, class OtherGiver>
bool operator!=(const XMLString<Giver>& a, const XMLString<OtherGiver>& b) noexcept {
  return !(a == b);
}
template <class Giver>
bool operator!=(const XMLString<Giver>& a, const std::string& b) noexcept {
  return !(a == b);
}
template <class Giver>
bool operator!=(const std::string& a, const XMLString<Giver>& b) noexcept {
  return !(b == a);
}
template <class Giver>
bool operator!=(const XMLString<Giver>& a, const char* b) noexcept {
  return !(a == b);
}
template <class Giver>
bool operator!=(const char* a, const XMLString<Giver>& b) noexcept {
  return !(b == a);
}

#endif
