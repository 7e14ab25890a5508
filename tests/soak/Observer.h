#ifndef XMLDOM_TESTS_SOAK_OBSERVER_H
#define XMLDOM_TESTS_SOAK_OBSERVER_H

#include <functional>
#include <string>

#include "harness/LogCapture.h"

/// Writes down what a call does that a caller can notice. While it lives, standard output and log
/// events go to it.
class Observer {
 public:
  Observer();
  ~Observer();

  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;

  /// Runs `call`, which appends its results to its argument. Result: those lines, then what was
  /// thrown, logged and printed, the library's error code, and each count of live objects that has
  /// changed.
  std::string Observe(const std::function<void(std::string& results)>& call);

 private:
  std::string TakePrinted();

  LogCapture m_log;
  int m_file;
  int m_stdout;
};

/// The first line in which two observations differ, with some lines before it and both wholes;
/// empty when they are equal.
std::string Difference(const std::string& library, const std::string& plain);

#endif
