#ifndef XMLDOM_SUPPORT_BSTR_H
#define XMLDOM_SUPPORT_BSTR_H

#include <xmldom/base/Export.h>

/// A NUL-terminated text of its own allocator: free it with SysFreeString, never with free or
/// delete.
typedef char* BSTR;

/// Copies a text. Result: a new BSTR, the caller's; null when `text` is null.
/// Effects: std::bad_alloc when memory is out.
XMLDOM_API BSTR SysAllocString(const char* text);

/// Copies the first `length` bytes of a text and terminates the copy.
/// Result: a new BSTR, the caller's (valid and empty for a length of 0); null when `text` is null.
/// Effects: std::bad_alloc when memory is out.
XMLDOM_API BSTR SysAllocStringLen(const char* text, unsigned long length);

/// Frees a BSTR and nulls the caller's pointer; a null pointer is left alone.
XMLDOM_API void SysFreeString(BSTR& text);

/// How many BSTRs are allocated and not yet freed.
/// Threads: a plain count; one thread at a time makes or frees BSTRs.
XMLDOM_API long GetNumBSTRsAllocated();

/// Owns one BSTR, or none.
class XMLDOM_API _bstr_t {
 public:
  /// Holds nothing.
  _bstr_t() : m_bstr(nullptr) {}

  /// Copies `text`; null gives a wrapper that holds nothing.
  _bstr_t(const char* text);

  /// Copies `text` when `copy` is true; otherwise takes over the BSTR.
  _bstr_t(BSTR text, bool copy);

  /// Copies the text of `other`; what was held is freed.
  _bstr_t(const _bstr_t& other);
  _bstr_t& operator=(const _bstr_t& other);
  ~_bstr_t();

  /// The text, borrowed until the wrapper changes or dies; null when it holds nothing.
  operator char*() const { return m_bstr; }

 private:
  BSTR m_bstr;
};

#endif
