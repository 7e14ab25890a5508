#ifndef XMLDOM_TESTS_HARNESS_TEMPORARYFILE_H
#define XMLDOM_TESTS_HARNESS_TEMPORARYFILE_H

#include <string>

/// A file under /tmp, gone at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& contents);
  ~TemporaryFile();

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  /// For IXMLDOMDocument2::load, which takes its path unqualified.
  char* Path() { return &m_path[0]; }

 private:
  std::string m_path;
};

#endif
