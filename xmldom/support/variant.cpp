// Copying, clearing and converting VARIANTs. A new value is complete before the old one is freed,
// since source and target may be the same record. Tested by tests/support/variant_test.cpp.

#include <xmldom/support/variant.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

namespace {

// The results of these functions are spelled here, so that the support layer needs nothing of the
// library that is built on it.
const HRESULT kDone = 0;
const HRESULT kNotConverted = static_cast<HRESULT>(0x80004005u);
const HRESULT kInvalidArgument = static_cast<HRESULT>(0x80004006u);

/// Stores a complete new value in `target`, and frees what it held before.
void Store(VARIANT* target, const VARIANT& value) {
  VariantClear(target);
  *target = value;
}

bool ParseInteger(const char* text, int* value) {
  if (text == nullptr) return false;
  char* end = nullptr;
  errno = 0;
  const long long number = std::strtoll(text, &end, 10);
  if (end == text || *end != '\0' || errno == ERANGE) return false;
  if (number < INT_MIN || number > INT_MAX) return false;
  *value = static_cast<int>(number);
  return true;
}

}  // namespace

void VariantInit(VARIANT* variant) {
  if (variant == nullptr) return;
  variant->bstrVal = nullptr;
  variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANT* variant) {
  if (variant == nullptr) return kInvalidArgument;
  if (variant->vt == VT_BSTR) SysFreeString(variant->bstrVal);
  VariantInit(variant);
  return kDone;
}

HRESULT VariantCopy(VARIANT* target, VARIANT* source) {
  if (target == nullptr || source == nullptr) return kInvalidArgument;
  if (target == source) return kDone;
  VARIANT value = *source;
  if (source->vt == VT_BSTR) value.bstrVal = SysAllocString(source->bstrVal);
  Store(target, value);
  return kDone;
}

HRESULT VariantChangeType(VARIANT* target, VARIANT* source, unsigned short, unsigned short type) {
  if (target == nullptr || source == nullptr) return kInvalidArgument;
  if (type == VT_EMPTY) return VariantClear(target);
  if (type == source->vt) return VariantCopy(target, source);

  VARIANT value;
  VariantInit(&value);
  value.vt = type;
  if (type == VT_BSTR && source->vt == VT_I4) {
    char text[16];
    std::snprintf(text, sizeof text, "%d", source->lVal);
    value.bstrVal = SysAllocString(text);
  } else if (type != VT_I4 || source->vt != VT_BSTR ||
             !ParseInteger(source->bstrVal, &value.lVal)) {
    return kNotConverted;
  }
  Store(target, value);
  return kDone;
}
