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

/// A tagged value. VariantInit makes a fresh record usable, VariantClear gives its value back.
typedef struct tagVARIANT {
  unsigned short vt;  ///< A VARENUM.
  union {
    int lVal;      ///< For VT_I4.
    BSTR bstrVal;  ///< For VT_BSTR.
  };
} VARIANT;

/// Makes the record empty, whatever it held: for a record that has no value yet. Null does nothing.
XMLDOM_API void VariantInit(VARIANT* variant);

/// Frees what the record owns and makes it empty.
/// Result: S_OK; E_ARGUMENT when `variant` is null.
XMLDOM_API HRESULT VariantClear(VARIANT* variant);

/// Copies `source` into `target`; a string that `target` held is freed, the one of `source` copied.
/// Result: S_OK; E_ARGUMENT when either is null. Effects: std::bad_alloc, `target` unchanged.
XMLDOM_API HRESULT VariantCopy(VARIANT* target, VARIANT* source);

/// Converts the value of `source` into `target`, which may be the same record. Anything converts
/// to VT_EMPTY; VT_I4 and VT_BSTR convert into each other as decimal text; nothing else converts
/// but to itself. `flags` is not used.
/// Result: S_OK; E_FAIL when there is no such conversion, or the text is no number that fits, and
/// `target` is unchanged; E_ARGUMENT when either record is null.
XMLDOM_API HRESULT VariantChangeType(VARIANT* target, VARIANT* source, unsigned short flags,
                                     unsigned short type);

/// A VARIANT that gives its value back by itself.
class _variant_t : public tagVARIANT {
 public:
  /// Holds nothing.
  _variant_t() { VariantInit(this); }

  /// Holds a copy of `text`; null gives a VT_BSTR that holds null.
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
