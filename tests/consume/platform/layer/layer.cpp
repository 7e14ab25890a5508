#include <other/layer.h>

#include <algorithm>
#include <cstdio>
#include <new>
#include <set>

// ---- Reference counting

CRefCountedObject::~CRefCountedObject() = default;

int CRefCountedObject::AddRef() { return ++references; }

int CRefCountedObject::RealRelease() {
  if (references > 1) return --references;
  delete this;
  return 0;
}

int CRefCountedObject::GetRefCount() const { return references; }

void* CRefCountedObject::operator new(std::size_t size) { return ::operator new[](size); }

void CRefCountedObject::operator delete(void* object) { ::operator delete[](object); }

// ---- Strings: the set knows all that are out

namespace {

std::set<char*>& Strings() {
  static std::set<char*> strings;
  return strings;
}

}  // namespace

BSTR SysAllocString(const char* text) {
  if (text == nullptr) return nullptr;
  return SysAllocStringLen(text, std::string(text).size());
}

BSTR SysAllocStringLen(const char* text, unsigned long length) {
  char* copy = new char[length + 1]();
  std::copy(text, text + length, copy);
  return *Strings().insert(copy).first;
}

void SysFreeString(BSTR& text) {
  if (Strings().erase(text) != 0) delete[] text;
  text = nullptr;
}

long GetNumBSTRsAllocated() { return static_cast<long>(Strings().size()); }

// ---- Variants

void VariantInit(VARIANT* variant) { *variant = VARIANT(); }

HRESULT VariantClear(VARIANT* variant) {
  if (variant->vt == VT_BSTR) SysFreeString(variant->bstrVal);
  VariantInit(variant);
  return S_OK;
}

HRESULT VariantCopy(VARIANT* target, VARIANT* source) {
  VARIANT copy = *source;
  if (copy.vt == VT_BSTR) copy.bstrVal = SysAllocString(copy.bstrVal);
  VariantClear(target);
  *target = copy;
  return S_OK;
}

HRESULT VariantChangeType(VARIANT* target, VARIANT*, unsigned short, unsigned short type) {
  return type == VT_EMPTY ? VariantClear(target) : E_FAIL;
}

// ---- Formatting

namespace {

std::string Format(const char* format, va_list arguments) {
  char* text = nullptr;
  const int length = vasprintf(&text, format, arguments);
  if (length < 0) throw std::bad_alloc();
  const std::string result(text, static_cast<std::size_t>(length));
  std::free(text);
  return result;
}

}  // namespace

// ---- Text buffers

CMemFile::CMemFile(unsigned int size) { bytes.reserve(size); }

void CMemFile::Write(const void* data, unsigned int size) {
  bytes.resize(m_uLength);
  bytes.append(static_cast<const char*>(data), size);
  m_uPosition = m_uLength = static_cast<unsigned int>(bytes.size());
}

void CMemFile::WriteF(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = Format(format, arguments);
  va_end(arguments);
  Write(text.data(), static_cast<unsigned int>(text.size()));
}

void CMemFile::WriteStrEntities(const char* text) {
  static const char* const names[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
  const std::string special = "&<>\"'";
  for (; *text != '\0'; ++text) {
    const std::size_t which = special.find(*text);
    const std::string written = which == std::string::npos ? std::string(1, *text) : names[which];
    Write(written.data(), static_cast<unsigned int>(written.size()));
  }
}

unsigned int CMemFile::Read(void* data, unsigned int size) {
  const unsigned int count = std::min(size, m_uLength - m_uPosition);
  bytes.copy(static_cast<char*>(data), count, m_uPosition);
  m_uPosition += count;
  return count;
}

const char* CMemFile::GetAsStr() {
  bytes.resize(m_uLength);
  return bytes.c_str();
}

// ---- Logging

namespace {

std::string l_journal;

void Note(int type, int severity, const std::string& title, const std::string& body) {
  l_journal += std::to_string(type) + "/" + std::to_string(severity) + " " + title + "|" + body;
  l_journal += "\n";
}

}  // namespace

std::string TakeJournal() {
  std::string journal;
  journal.swap(l_journal);
  return journal;
}

void CLogger::PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           const char* body) {
  Note(type, severity, title, body == nullptr ? "" : body);
}

void CLogger::PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           IXMLDOMNode* node) {
  Note(type, severity, title, node == nullptr ? "" : "a node");
}

void CLogger::PostLogEventF(LogTypeEnum type, LogSeverityEnum severity, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  Note(type, severity, Format(format, arguments), "");
  va_end(arguments);
}

void CLogger::PostLogEventFB(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                             const char* body, ...) {
  va_list arguments;
  va_start(arguments, body);
  Note(type, severity, Format(format, arguments), body);
  va_end(arguments);
}

void CLogger::PostBacktrace(LogTypeEnum type, LogSeverityEnum severity, const char* title) {
  Note(type, severity, title, "no call stack");
}

// ---- Exceptions

void CLogException::LogMessage(int type, int severity, const char* title) const {
  Note(type, severity, title, text);
}

CLogException* Exception(const char* where, const char* message, char* detail) {
  return new CLogException(std::string(where) + "/" + message + "/" +
                           (detail == nullptr ? "" : detail));
}

CLogException* ExceptionF(const char* where, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string message = Format(format, arguments);
  va_end(arguments);
  return new CLogException(std::string(where) + "/" + message + "/");
}
