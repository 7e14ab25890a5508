#ifndef XMLDOM_PTR_XMLPTRSTRINGS_H
#define XMLDOM_PTR_XMLPTRSTRINGS_H

#include <xmldom/ptr/XMLOwner.h>
#include <xmldom/support/bstr.h>

#include <cstdlib>

/// Owns one text that a member has handed out, or none, and frees it at the end. There are two
/// kinds, XMLBstr and XMLHeapStr, and the comment of a member says which kind it hands out. A text
/// can be moved, but not copied.
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

  /// Takes over a text that the caller owns; it must be of the kind that this frees. Null means
  /// none.
  static XMLString Adopt(char* text) noexcept { return XMLString(text); }

  /// Result: the text, borrowed for as long as this owns it; an empty text, never null, when there
  /// is none.
  const char* c_str() const noexcept { return this->Get() != nullptr ? this->Get() : ""; }

 private:
  typedef XMLOwner<char, Giver> Owner;

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

/// Owns a BSTR. Unlike a _bstr_t it is never copied by accident, and it can be passed to
/// out-pointers. `XMLBstr xml = XMLBstr::Adopt(document->GetXML());`
typedef XMLString<XMLBstrFreer> XMLBstr;

/// Owns a text on the C heap.
/// `XMLHeapStr text = XMLHeapStr::Adopt(node->GetTextAsStr());`
typedef XMLString<XMLHeapFreer> XMLHeapStr;

#endif
