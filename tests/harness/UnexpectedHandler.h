#ifndef XMLDOM_TESTS_HARNESS_UNEXPECTEDHANDLER_H
#define XMLDOM_TESTS_HARNESS_UNEXPECTEDHANDLER_H

#include <xmldom/support/LogException.h>

#include <exception>

// Deprecated, and the one way to see what becomes of an exception that must not leave a function.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

/// While it lives, the handler for unexpected exceptions throws one CLogException*, which takes no
/// memory to make.
class UnexpectedHandler {
 public:
  UnexpectedHandler() : m_before(std::set_unexpected(Handle)) { TheException(); }
  ~UnexpectedHandler() { std::set_unexpected(m_before); }

  UnexpectedHandler(const UnexpectedHandler&) = delete;
  UnexpectedHandler& operator=(const UnexpectedHandler&) = delete;

  /// Whether `call` ends in the handler.
  template <class Call>
  bool Catches(Call call) {
    try {
      call();
    } catch (CLogException* exception) {
      if (exception != TheException()) throw;
      return true;
    }
    return false;
  }

 private:
  static CLogException* TheException() {
    static CLogException exception("UnexpectedHandler", "unexpected", nullptr);
    return &exception;
  }

  static void Handle() { throw TheException(); }

  std::unexpected_handler m_before;
};

#pragma GCC diagnostic pop

#endif
