#ifndef XMLDOM_TESTS_HARNESS_STDOUTCAPTURE_H
#define XMLDOM_TESTS_HARNESS_STDOUTCAPTURE_H

#include <string>

/// Collects what is written to standard output, through stdio or not, until Take() or its end.
class StdoutCapture {
 public:
  StdoutCapture();
  ~StdoutCapture();

  StdoutCapture(const StdoutCapture&) = delete;
  StdoutCapture& operator=(const StdoutCapture&) = delete;

  /// Ends the capture and returns what was written.
  std::string Take();

 private:
  void Restore();

  int m_file;    // receives the output
  int m_stdout;  // the real one; -1 when restored
};

#endif
