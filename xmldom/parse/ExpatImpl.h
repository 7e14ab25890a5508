#ifndef XMLDOM_PARSE_EXPATIMPL_H
#define XMLDOM_PARSE_EXPATIMPL_H

#include <expat.h>

#include <cassert>
#include <climits>
#include <cstddef>
#include <cstring>
#include <exception>

/// Expands its argument before assert turns it into text: the message shows the value of NULL.
#define XMLDOM_ASSERT_EXPANDED(condition) assert(condition)

/// Binds one Expat parser to one handler object of class _T, which derives from this template and
/// has OnStartElement, OnEndElement and OnDefault.
///
/// All that work on a parser, but for CreateParser and DestroyParser, assert that there is one.
/// Exceptions: one that leaves a handler must not cross Expat's frames, for which a target may have
/// no unwind tables. The trampolines keep it and stop the parser; Parse throws it on. Until then
/// Expat may go on calling the trampolines, which return at once. Parses may run within a handler,
/// of other parsers. A trampoline that is called by hand, not by the parse of its own parser, lets
/// every exception through.
template <class _T>
class CExpatImpl {
 public:
  /// Without parser.
  CExpatImpl() : m_p(NULL) {}

  /// Makes the parser: Expat's own encoding detection and memory functions, no namespaces. Start,
  /// end and default handler are installed, the last with expansion of internal entities.
  /// Result: false when Expat could not make one; m_p is then null.
  bool CreateParser() {
    m_p = XML_ParserCreate_MM(NULL, NULL, NULL);
    if (m_p == NULL) return false;
    EnableElementHandler(true);
    EnableDefaultHandler(true, true);
    XML_SetUserData(m_p, static_cast<_T*>(this));
    return true;
  }

  /// Frees the parser, if there is one.
  void DestroyParser() {
    if (m_p == NULL) return;
    XML_ParserFree(m_p);
    m_p = NULL;
  }

  /// Installs the handler for start tags, or takes it back.
  void EnableStartElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    XML_SetStartElementHandler(m_p, enable ? StartElementHandler : NULL);
  }

  /// Installs the handler for end tags, or takes it back.
  void EnableEndElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    XML_SetEndElementHandler(m_p, enable ? EndElementHandler : NULL);
  }

  /// Both handlers for tags.
  void EnableElementHandler(bool enable) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    EnableStartElementHandler(enable);
    EnableEndElementHandler(enable);
  }

  /// Installs the handler for all else, or takes it back. `expand`: internal entity references
  /// reach it replaced by their text.
  void EnableDefaultHandler(bool enable, bool expand) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    if (expand) {
      XML_SetDefaultHandlerExpand(m_p, enable ? DefaultHandler : NULL);
    } else {
      XML_SetDefaultHandler(m_p, enable ? DefaultHandler : NULL);
    }
  }

  /// Parses a piece of text; a negative `length` stands for the length of a NUL-terminated one.
  /// Result: whether Expat accepted it; false for a text of more than INT_MAX bytes, of which
  /// nothing is parsed. Effects: throws what a handler threw.
  bool Parse(const char* buffer, int length, bool final) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    if (length < 0) {
      const std::size_t whole = std::strlen(buffer);
      if (whole > INT_MAX) return false;
      length = static_cast<int>(whole);
    }
    Run run = {this, Innermost(), nullptr};
    Innermost() = &run;
    const bool parsed = XML_Parse(m_p, buffer, length, final) != XML_STATUS_ERROR;
    Innermost() = run.outer;
    // An Expat without input context has parsed in the caller's memory, and counts lines there when
    // it is asked for one. Asked now, while the text lives, it remembers the answer.
    int offset = 0;
    int size = 0;
    if (XML_GetInputContext(m_p, &offset, &size) == NULL) XML_GetCurrentLineNumber(m_p);
    if (run.thrown != nullptr) {
      XML_SetUserData(m_p, static_cast<_T*>(this));
      std::rethrow_exception(run.thrown);
    }
    return parsed;
  }

  /// Expat's code of the error that ended the parse, or XML_ERROR_NONE.
  XML_Error GetErrorCode() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetErrorCode(m_p);
  }

  /// Length of the current event, in bytes.
  int GetCurrentByteCount() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetCurrentByteCount(m_p);
  }

  /// Line of the current event, from 1.
  int GetCurrentLineNumber() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return static_cast<int>(XML_GetCurrentLineNumber(m_p));
  }

  /// Column of the current event, from 0.
  int GetCurrentColumnNumber() {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return static_cast<int>(XML_GetCurrentColumnNumber(m_p));
  }

  /// Expat's input buffer, borrowed until the next parse, with the offset of the current event in
  /// it and its size; null when Expat has none.
  const char* GetInputContext(int* offset, int* size) {
    XMLDOM_ASSERT_EXPANDED(m_p != NULL);
    return XML_GetInputContext(m_p, offset, size);
  }

  /// What Expat calls at a start tag: calls OnStartElement of the handler that is its user data.
  static void StartElementHandler(void* userData, const char* name, const char** attributes) {
    Forward(userData, [=](_T* handler) { handler->OnStartElement(name, attributes); });
  }

  /// What Expat calls at an end tag: calls OnEndElement.
  static void EndElementHandler(void* userData, const char* name) {
    Forward(userData, [=](_T* handler) { handler->OnEndElement(name); });
  }

  /// What Expat calls for all else: calls OnDefault.
  static void DefaultHandler(void* userData, const char* text, int length) {
    Forward(userData, [=](_T* handler) { handler->OnDefault(text, length); });
  }

  XML_Parser m_p;  ///< The parser, or null.

 private:
  /// One call of Parse.
  struct Run {
    CExpatImpl* parser;
    Run* outer;                 ///< The parse in whose handler this one was begun, or null.
    std::exception_ptr thrown;  ///< What a handler threw.
  };

  template <class Call>
  static void Forward(void* userData, Call call) {
    _T* handler = static_cast<_T*>(userData);
    if (handler == nullptr) return;
    try {
      call(handler);
    } catch (...) {
      handler->Keep();
    }
  }

  /// Keeps the exception that is being handled, and stops the parser.
  void Keep() {
    Run* const run = Innermost();
    if (run == nullptr || run->parser != this) throw;  // A trampoline was called by hand.
    run->thrown = std::current_exception();
    // A parser that has been stopped still reports the end of the element that it is in, and the
    // rest of a text that it converts from another encoding. It reads the pointer to the handler
    // without a test there, so that no handler may be taken back; without user data they do
    // nothing.
    XML_SetUserData(m_p, nullptr);
    XML_StopParser(m_p, XML_FALSE);
  }

  /// The innermost parse of this thread; null when none is running.
  static Run*& Innermost() {
    static thread_local Run* run = nullptr;
    return run;
  }
};

#endif
