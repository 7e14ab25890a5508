#ifndef OTHER_LAYER_H
#define OTHER_LAYER_H

// A support layer as small as a platform could have it, and no relation of the one in xmldom/.

#include <cstdarg>
#include <cstddef>
#include <string>

class IXMLDOMNode;

// ---- Results. The library's names for them are there already, in the ways that C has for a name.

typedef int HRESULT;
typedef short VARIANT_BOOL;

#define S_OK 0
enum { E_FAIL = -2147467259 };
#define E_FAIL E_FAIL

// ---- Reference counting

class CRefCountedObject {
 public:
  CRefCountedObject() : references(1) {}
  virtual ~CRefCountedObject();
  int AddRef();
  int RealRelease();
  int GetRefCount() const;
  void* operator new(std::size_t size);
  void operator delete(void* object);

 private:
  int references;
};

// ---- Strings

typedef char* BSTR;

BSTR SysAllocString(const char* text);
BSTR SysAllocStringLen(const char* text, unsigned long length);
void SysFreeString(BSTR& text);
long GetNumBSTRsAllocated();

class _bstr_t {
 public:
  _bstr_t(const char* text) : owned(SysAllocString(text)) {}
  _bstr_t(BSTR text, bool copy) : owned(copy ? SysAllocString(text) : text) {}
  _bstr_t(const _bstr_t& other) : owned(SysAllocString(other.owned)) {}
  ~_bstr_t() { SysFreeString(owned); }
  _bstr_t& operator=(const _bstr_t&) = delete;
  operator char*() const { return owned; }

 private:
  BSTR owned;
};

// ---- Variants

enum { VT_EMPTY = 0, VT_I4 = 3, VT_BSTR = 8 };

struct tagVARIANT {
  unsigned short vt;
  union {
    int lVal;
    char* bstrVal;
  };
};
typedef tagVARIANT VARIANT;

void VariantInit(VARIANT* variant);
HRESULT VariantClear(VARIANT* variant);
HRESULT VariantCopy(VARIANT* target, VARIANT* source);
HRESULT VariantChangeType(VARIANT* target, VARIANT* source, unsigned short flags,
                          unsigned short type);

struct _variant_t : tagVARIANT {
  _variant_t() { VariantInit(this); }
  explicit _variant_t(const char* text) {
    vt = VT_BSTR;
    bstrVal = SysAllocString(text);
  }
  ~_variant_t() { VariantClear(this); }
  _variant_t(const _variant_t&) = delete;
  _variant_t& operator=(const _variant_t&) = delete;
};

// ---- Text buffers

class CMemFile {
 public:
  explicit CMemFile(unsigned int size);
  void Write(const void* data, unsigned int size);
  void WriteF(const char* format, ...);
  void WriteStrEntities(const char* text);
  unsigned int Read(void* data, unsigned int size);
  const char* GetAsStr();

  unsigned int m_uPosition = 0;
  unsigned int m_uLength = 0;

 private:
  std::string bytes;
};

// ---- Logging: the platform keeps a journal, one line an event

enum LogTypeEnum { JOURNAL_INPUT = 11, JOURNAL_XML = 18, JOURNAL_LAST = 31 };
enum LogSeverityEnum { JOURNAL_HIGHEST = 0, JOURNAL_LOWEST = 15 };

class CLogger {
 public:
  static void PostLogEvent(LogTypeEnum, LogSeverityEnum, const char* title, const char* body);
  static void PostLogEvent(LogTypeEnum, LogSeverityEnum, const char* title, IXMLDOMNode* node);
  static void PostLogEventF(LogTypeEnum, LogSeverityEnum, const char* format, ...);
  static void PostLogEventFB(LogTypeEnum, LogSeverityEnum, const char* format, const char* body,
                             ...);
  static void PostBacktrace(LogTypeEnum, LogSeverityEnum, const char* title);
};

/// Hands over what has been logged since the last call: "type/severity title|body", line by line.
std::string TakeJournal();

// ---- Exceptions

class CLogException {
 public:
  explicit CLogException(const std::string& what) : text(what) {}
  void LogMessage(int type, int severity, const char* title) const;

  const std::string text;
};

/// Both return what the caller throws.
CLogException* Exception(const char* where, const char* message, char* detail);
CLogException* ExceptionF(const char* where, const char* format, ...);

#endif
