// BSTRs, which callers free with SysFreeString: copies on the C heap, and a count of those that
// have not been freed yet. Tested by tests/support/bstr_test.cpp.

#include <xmldom/support/bstr.h>

#include <xmldom/base/LiveCount.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

long l_nAllocated = 0;

}  // namespace

BSTR SysAllocString(const char* text) {
  return text == nullptr ? nullptr : SysAllocStringLen(text, std::strlen(text));
}

BSTR SysAllocStringLen(const char* text, unsigned long length) {
  if (text == nullptr) return nullptr;
  if (length == ULONG_MAX) throw std::bad_alloc();
  BSTR copy = static_cast<BSTR>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  xmldom::AddToCount(l_nAllocated, 1);
  return copy;
}

void SysFreeString(BSTR& text) {
  if (text == nullptr) return;
  std::free(text);
  text = nullptr;
  xmldom::AddToCount(l_nAllocated, -1);
}

long GetNumBSTRsAllocated() { return xmldom::ReadCount(l_nAllocated); }

_bstr_t::_bstr_t(const char* text) : m_bstr(SysAllocString(text)) {}

_bstr_t::_bstr_t(BSTR text, bool copy) : m_bstr(copy ? SysAllocString(text) : text) {}

_bstr_t::_bstr_t(const _bstr_t& other) : m_bstr(SysAllocString(other.m_bstr)) {}

_bstr_t& _bstr_t::operator=(const _bstr_t& other) {
  if (this != &other) {
    BSTR copy = SysAllocString(other.m_bstr);
    SysFreeString(m_bstr);
    m_bstr = copy;
  }
  return *this;
}

_bstr_t::~_bstr_t() { SysFreeString(m_bstr); }
