// The log: it makes the texts of each event and passes it to the one sink, which writes to standard
// error unless an application sets another. Tested by tests/support/Logger_test.cpp.

#include <xmldom/support/Logger.h>

#include <xmldom/support/ArgumentList.h>
#include <xmldom/support/MemFile.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

#if defined(__has_include)
#if __has_include(<execinfo.h>)
#include <execinfo.h>
#define XMLDOM_HAS_BACKTRACE 1
#endif
#endif

namespace {

void WriteToStandardError(const CLogEvent& event, void*) {
  std::fprintf(stderr, "xmldom: %s (type %d, severity %d)\n", event.title, event.type,
               event.severity);
  if (event.body != nullptr) std::fprintf(stderr, "%s\n", event.body);
}

LogSink l_pSink = WriteToStandardError;
void* l_pSinkContext = nullptr;
NodeRenderer l_pNodeRenderer = nullptr;

void Post(LogTypeEnum type, LogSeverityEnum severity, const char* title, const char* body) {
  const CLogEvent event = {type, severity, title == nullptr ? "" : title, body};
  l_pSink(event, l_pSinkContext);
}

void PostFormatted(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                   va_list arguments, const char* body) XMLDOM_PRINTF(3, 0);

void PostFormatted(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                   va_list arguments, const char* body) {
  CMemFile title(256);
  title.WriteFV(format, arguments);
  Post(type, severity, title.GetAsStr(), body);
}

#ifdef XMLDOM_HAS_BACKTRACE

/// Whether two addresses of code are the same, but for the lowest bit: on ARM a return address has
/// the instruction set there, and the addresses that backtrace() gives do not.
bool IsSameCode(const void* a, const void* b) {
  return reinterpret_cast<std::uintptr_t>(a) >> 1 == reinterpret_cast<std::uintptr_t>(b) >> 1;
}

#endif

}  // namespace

void CLogger::SetSink(LogSink sink, void* context) {
  l_pSink = sink == nullptr ? WriteToStandardError : sink;
  l_pSinkContext = sink == nullptr ? nullptr : context;
}

void CLogger::SetNodeRenderer(NodeRenderer renderer) {
  __atomic_store_n(&l_pNodeRenderer, renderer, __ATOMIC_RELAXED);
}

void CLogger::PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           const char* body) {
  Post(type, severity, title, body);
}

void CLogger::PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           IXMLDOMNode* node) {
  const NodeRenderer renderer = __atomic_load_n(&l_pNodeRenderer, __ATOMIC_RELAXED);
  const bool renders = node != nullptr && renderer != nullptr;
  const _bstr_t body(renders ? renderer(node) : nullptr, false);
  Post(type, severity, title, body);
}

void CLogger::PostLogEventF(LogTypeEnum type, LogSeverityEnum severity, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const xmldom::ArgumentListEnd end = {arguments};
  PostFormatted(type, severity, format, arguments, nullptr);
}

void CLogger::PostLogEventFB(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                             const char* body, ...) {
  va_list arguments;
  va_start(arguments, body);
  const xmldom::ArgumentListEnd end = {arguments};
  PostFormatted(type, severity, format, arguments, body);
}

void CLogger::PostBacktrace(LogTypeEnum type, LogSeverityEnum severity, const char* title) {
  CMemFile body(1024);
#ifdef XMLDOM_HAS_BACKTRACE
  void* frames[64];
  const int count = backtrace(frames, 64);
  const std::unique_ptr<char*, void (*)(void*)> symbols(backtrace_symbols(frames, count),
                                                        std::free);
  // The body begins with the caller. Frames before it are of this function and of instrumentation.
  int first = 0;
  while (first < count && !IsSameCode(frames[first], __builtin_return_address(0))) ++first;
  for (int i = first == count ? 0 : first; i < count; ++i) {
    if (symbols != nullptr) {
      body.WriteF("%s\n", symbols.get()[i]);
    } else {
      body.WriteF("%p\n", frames[i]);
    }
  }
#else
  body.WriteF("call stack not available on this platform\n");
#endif
  Post(type, severity, title, body.GetAsStr());
}
