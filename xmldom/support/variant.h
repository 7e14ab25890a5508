#ifndef XMLDOM_SUPPORT_VARIANT_H
#define XMLDOM_SUPPORT_VARIANT_H

#include <xmldom/base/Export.h>
#include <xmldom/support/bstr.h>

#include <cassert>

/// Result of a COM-style member: negative means failure. <xmldom/dom/Results.h> names those in use.
typedef int HRESULT;

/// Boolean of a COM-style member; only VARIANT_TRUE and VARIANT_FALSE are ever stored.
typedef short VARIANT_BOOL;

/// What a VARIANT holds.
enum VARENUM : unsigned short {
  VT_EMPTY = 0,  ///< Nothing.
  VT_I4 = 3,     ///< `lVal`.
  VT_BSTR = 8    ///< `bstrVal`, owned by the record; may be null.
};

/// A value of one of several types. A new record must be passed to VariantInit before it is used,
/// and VariantClear frees its value.
typedef struct tagVARIANT {
  unsigned short vt;  ///< A VARENUM.
  union {
    int lVal;      ///< For VT_I4.
    BSTR bstrVal;  ///< For VT_BSTR.
  };
} VARIANT;

/// Makes a new record empty, with the type VT_EMPTY and a null `bstrVal`. Whatever the record holds
/// is overwritten and not freed. Null is left alone.
XMLDOM_API void VariantInit(VARIANT* variant);

/// Frees what the record owns and makes it empty.
/// Result: S_OK; E_ARGUMENT when `variant` is null.
XMLDOM_API HRESULT VariantClear(VARIANT* variant);

/// Copies `source` into `target`; a string that `target` held is freed, the one of `source` copied.
/// Result: S_OK; E_ARGUMENT when either is null. Effects: std::bad_alloc, `target` unchanged.
XMLDOM_API HRESULT VariantCopy(VARIANT* target, VARIANT* source);

/// Converts the value of `source` into `target`, which may be the same record. Anything converts to
/// VT_EMPTY, and any type to itself. VT_I4 and VT_BSTR convert into each other as decimal text.
/// There are no other conversions. `flags` is not used.
/// Result: S_OK; E_FAIL when there is no such conversion, or the text is no number that fits, and
/// `target` is unchanged; E_ARGUMENT when either record is null.
XMLDOM_API HRESULT VariantChangeType(VARIANT* target, VARIANT* source, unsigned short flags,
                                     unsigned short type);

/// A VARIANT that frees its value when it is destroyed.
class _variant_t : public tagVARIANT {
 public:
  /// Makes an empty value.
  _variant_t() { VariantInit(this); }

  /// Makes a VT_BSTR that holds a copy of `text`; null when `text` is null.
  explicit _variant_t(const char* text) {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text);
    if (bstrVal == nullptr && text != nullptr) assert(0);
  }

  ~_variant_t() { VariantClear(this); }

  _variant_t(const _variant_t&) = delete;
  _variant_t& operator=(const _variant_t&) = delete;
};

#endif
