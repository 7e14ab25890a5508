#ifndef XMLDOM_PARSE_EXPATIMPL_H
#define XMLDOM_PARSE_EXPATIMPL_H

#include <expat.h>
#include <xmldom/base/Export.h>

#include <cassert>
#include <climits>
#include <cstddef>
#include <cstring>
#include <exception>
#include <new>
#include <typeinfo>

/// Asserts a condition whose macros are expanded first, so that the message shows what NULL stands
/// for ("m_p != __null").
#define XMLDOM_ASSERT_EXPANDED(condition) assert(condition)

namespace xmldom {

/// One call of CExpatImpl::Parse that has not returned yet.
struct ExpatRun {
  const void* binding;        ///< The CExpatImpl whose Parse it is.
  ExpatRun* outer;            ///< The call of Parse in whose handler this one was made, or null.
  std::exception_ptr thrown;  ///< What a handler threw; null when none has.
  bool memoryIsOut;           ///< Whether a handler threw a std::bad_alloc, which is thrown anew.

#ifdef __cpp_exceptions
  /// Keeps the exception that is being handled. That memory is out is all that the library's own
  /// handlers throw, and is therefore kept without an exception_ptr: in an application with another
  /// standard library, that of the one could not be thrown with the runtime of the other.
  void Keep() {
#ifdef __cpp_rtti
    try {
      throw;
    } catch (const std::bad_alloc& exception) {
      memoryIsOut = typeid(exception) == typeid(std::bad_alloc);
    } catch (...) {
    }
#endif
    if (!memoryIsOut) thrown = std::current_exception();
  }

  /// Throws what was kept, if anything was.
  void Rethrow() {
    if (memoryIsOut) throw std::bad_alloc();
    if (thrown != nullptr) std::rethrow_exception(thrown);
  }
#endif

  /// Whether an exception is kept.
  bool HasKept() const { return memoryIsOut || thrown != nullptr; }
};

/// The innermost call of Parse in this thread, for all bindings of a program; null when none is
/// running. One variable of the library serves them all: one of each class would keep every plug-in
/// loaded that has such a class.
XMLDOM_API ExpatRun*& InnermostExpatRun();

}  // namespace xmldom

/// Binds one Expat parser to one handler object of class _T, which derives from this template and
/// has the members OnStartElement, OnEndElement and OnDefault. Expat calls three static functions,
/// the trampolines, which call these members.
///
/// Bad input: every member that works on the parser, except CreateParser and DestroyParser, asserts
/// that there is one.
/// Exceptions: a handler may throw. The exception must not pass through Expat's C functions, for
/// which a target may have no unwind tables. The trampoline therefore keeps it and stops the
/// parser, and Parse throws it when Expat has returned. Until then Expat may call trampolines
/// again; they return at once. It may also call a handler that an application has installed itself;
/// the user data is null then. A trampoline that is not called by the innermost parse of its own
/// parser lets every exception through to its caller. A handler may run parses of other parsers. In
/// a source that is compiled without exceptions a handler must let none out.
template <class _T>
class CExpatImpl {
 public:
  /// Makes the binding without a parser.
  CExpatImpl() : m_p(nullptr) {}

  /// Makes the parser, which detects the encoding of a text itself, uses the memory functions of
  /// the C library and does not process namespaces. Installs the handlers for start tags, for end
  /// tags and for everything else, the last with internal entities expanded. Result: false when
  /// Expat could not make a parser; m_p is then null.
  bool CreateParser() {
    m_p = XML_ParserCreate_MM(nullptr, nullptr, nullptr);
    if (m_p == nullptr) return false;
    EnableElementHandler(true);
    EnableDefaultHandler(true, true);
    XML_SetUserData(m_p, static_cast<_T*>(this));
    return true;
  }

  /// Frees the parser; does nothing without one.
  void DestroyParser() {
    if (m_p == nullptr) return;
    XML_ParserFree(m_p);
    m_p = nullptr;
  }

  // NULL stays in the assertions, whose messages show what it stands for.
  // NOLINTBEGIN(modernize-use-nullptr)

  /// Installs the handler for start tags, or removes it.
  void EnableStartElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    XML_SetStartElementHandler(m_p, enable ? StartElementHandler : nullptr);
  }

  /// Installs the handler for end tags, or removes it.
  void EnableEndElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    XML_SetEndElementHandler(m_p, enable ? EndElementHandler : nullptr);
  }

  /// Installs both handlers for tags, or removes them.
  void EnableElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    EnableStartElementHandler(enable);
    EnableEndElementHandler(enable);
  }

  /// Installs the handler for everything that no other handler is installed for, or removes it.
  /// With `expand`, a reference to an internal entity is replaced by the text of the entity;
  /// without, the handler gets the reference as it is written.
  void EnableDefaultHandler(bool enable, bool expand) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    if (expand) {
      XML_SetDefaultHandlerExpand(m_p, enable ? DefaultHandler : nullptr);
    } else {
      XML_SetDefaultHandler(m_p, enable ? DefaultHandler : nullptr);
    }
  }

  /// Parses a piece of text, the last one if `final`. A negative `length` means that the text ends
  /// at its first NUL byte. Result: whether Expat accepted the piece; false for a piece of more
  /// than INT_MAX bytes, of which nothing is parsed. Effects: throws what a handler threw.
  ///
  /// Never inline, so that it is the library's own for a CXMLSax, however the caller is compiled.
  XMLDOM_NOINLINE bool Parse(const char* buffer, int length, bool final) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    if (length < 0) {
      const std::size_t whole = std::strlen(buffer);
      if (whole > INT_MAX) return false;
      length = static_cast<int>(whole);
    }
    return ParsePiece(buffer, length, final, false);
  }

  /// Result: Expat's code of the error that ended the parse, or XML_ERROR_NONE.
  XML_Error GetErrorCode() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetErrorCode(m_p);
  }

  /// Result: the length of the current event in bytes. After a parse the current event is the one
  /// that failed, or the last one.
  int GetCurrentByteCount() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetCurrentByteCount(m_p);
  }

  /// Result: the line of the current event, counted from 1.
  int GetCurrentLineNumber() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return static_cast<int>(XML_GetCurrentLineNumber(m_p));
  }

  /// Result: the column of the current event, counted from 0.
  int GetCurrentColumnNumber() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return static_cast<int>(XML_GetCurrentColumnNumber(m_p));
  }

  /// Result: Expat's input buffer, borrowed until the next parse; null before the first parse, and
  /// always when Expat was built without input context. Out: the position of the current event in
  /// the buffer and the size of the buffer, in bytes; both are left alone on null.
  const char* GetInputContext(int* offset, int* size) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetInputContext(m_p, offset, size);
  }

  // NOLINTEND(modernize-use-nullptr)

  /// The trampoline for start tags: calls OnStartElement of the handler object, which `userData`
  /// points to. `attributes` is name, value, name, value, ..., null.
  static void StartElementHandler(void* userData, const char* name, const char** attributes) {
    Forward(userData, [=](_T* handler) { handler->OnStartElement(name, attributes); });
  }

  /// The trampoline for end tags: calls OnEndElement of the handler object.
  static void EndElementHandler(void* userData, const char* name) {
    Forward(userData, [=](_T* handler) { handler->OnEndElement(name); });
  }

  /// The trampoline for everything else: calls OnDefault of the handler object.
  static void DefaultHandler(void* userData, const char* text, int length) {
    Forward(userData, [=](_T* handler) { handler->OnDefault(text, length); });
  }

  XML_Parser m_p;  ///< The parser; null when there is none.

 protected:
  /// Parses a piece of text as Parse does, one of `length` bytes. With `isInBuffer` it stands in
  /// the memory that XML_GetBuffer has given, which saves a copy, and `text` is not looked at.
  XMLDOM_NOINLINE bool ParsePiece(const char* text, int length, bool final, bool isInBuffer) {
    xmldom::ExpatRun*& innermost = xmldom::InnermostExpatRun();
    xmldom::ExpatRun run = {this, innermost, nullptr, false};
    innermost = &run;
    const XML_Status status =
        isInBuffer ? XML_ParseBuffer(m_p, length, final) : XML_Parse(m_p, text, length, final);
    innermost = run.outer;
    // An Expat without input context has parsed in the caller's memory, and counts lines there when
    // it is asked for one. Asked now, while the text lives, it remembers the answer.
    int offset = 0;
    int size = 0;
    if (XML_GetInputContext(m_p, &offset, &size) == nullptr) XML_GetCurrentLineNumber(m_p);
#ifdef __cpp_exceptions
    if (run.HasKept()) {
      XML_SetUserData(m_p, static_cast<_T*>(this));
      run.Rethrow();
    }
#endif
    return status != XML_STATUS_ERROR;
  }

 private:
  /// Makes a call of the handler object, unless an exception is kept, which has set the user data
  /// to null.
  template <class Call>
  static void Forward(void* userData, Call call) {
    _T* handler = static_cast<_T*>(userData);
    if (handler == nullptr) return;
#ifdef __cpp_exceptions
    try {
      call(handler);
    } catch (...) {
      // The class of the application may have a member of that name.
      static_cast<CExpatImpl*>(handler)->Keep();
    }
#else
    call(handler);
#endif
  }

#ifdef __cpp_exceptions
  /// Keeps the exception that is being handled for Parse to throw, and stops the parser. Throws it
  /// on when the trampoline was called by somebody else than the innermost parse.
  void Keep() {
    xmldom::ExpatRun* const run = xmldom::InnermostExpatRun();
    if (run == nullptr || run->binding != this) throw;
    run->Keep();
    // A stopped parser still reports the end tag of an empty element, and the rest of a text that
    // it is converting from another encoding. There it calls the handler without testing whether
    // one is installed. The handlers therefore stay installed; null user data makes the trampolines
    // return at once.
    XML_SetUserData(m_p, nullptr);
    XML_StopParser(m_p, XML_FALSE);
  }
#endif
};

#endif
