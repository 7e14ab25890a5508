#ifndef XMLDOM_SUPPORT_BSTR_H
#define XMLDOM_SUPPORT_BSTR_H

#include <xmldom/base/Export.h>

/// A NUL-terminated text that must be freed with SysFreeString, never with free or delete.
typedef char* BSTR;

/// Copies a text. Result: a new BSTR, the caller's; null when `text` is null.
/// Effects: std::bad_alloc when memory is out.
XMLDOM_API BSTR SysAllocString(const char* text);

/// Copies the first `length` bytes of a text and terminates the copy.
/// Result: a new BSTR, the caller's (valid and empty for a length of 0); null when `text` is null.
/// Effects: std::bad_alloc when memory is out.
XMLDOM_API BSTR SysAllocStringLen(const char* text, unsigned long length);

/// Frees a BSTR and sets the caller's pointer to null. A null pointer is left alone.
XMLDOM_API void SysFreeString(BSTR& text);

/// Result: how many BSTRs have been allocated and not yet freed.
/// Threads: all share the count, and may make and free BSTRs at the same time.
XMLDOM_API long GetNumBSTRsAllocated();

/// Owns one BSTR, or none.
class XMLDOM_API _bstr_t {
 public:
  /// Owns nothing.
  _bstr_t() : m_bstr(nullptr) {}

  /// Owns a copy of `text`; nothing for null.
  _bstr_t(const char* text);

  /// Owns a copy of `text` when `copy` is true; otherwise takes over the BSTR itself.
  _bstr_t(BSTR text, bool copy);

  /// Owns a copy of the text of `other`; what was owned before is freed.
  _bstr_t(const _bstr_t& other);
  _bstr_t& operator=(const _bstr_t& other);
  ~_bstr_t();

  /// The text, borrowed until this object is assigned to or destroyed; null when it owns nothing.
  operator char*() const { return m_bstr; }

 private:
  BSTR m_bstr;
};

#endif
