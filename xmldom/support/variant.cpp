#include <xmldom/support/variant.h>

#include <xmldom/Results.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

namespace {

// Frees what `target` holds only now that the new value is complete, since the two may be one
// record.
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
  if (variant == nullptr) return E_ARGUMENT;
  if (variant->vt == VT_BSTR) SysFreeString(variant->bstrVal);
  VariantInit(variant);
  return S_OK;
}

HRESULT VariantCopy(VARIANT* target, VARIANT* source) {
  if (target == nullptr || source == nullptr) return E_ARGUMENT;
  if (target == source) return S_OK;
  VARIANT value = *source;
  if (source->vt == VT_BSTR) value.bstrVal = SysAllocString(source->bstrVal);
  Store(target, value);
  return S_OK;
}

HRESULT VariantChangeType(VARIANT* target, VARIANT* source, unsigned short, unsigned short type) {
  if (target == nullptr || source == nullptr) return E_ARGUMENT;
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
    return E_FAIL;
  }
  Store(target, value);
  return S_OK;
}
