#ifndef XMLDOM_TESTS_HARNESS_TEMPORARYFOLDER_H
#define XMLDOM_TESTS_HARNESS_TEMPORARYFOLDER_H

#include <string>

/// A folder under another one, gone at the end with the files in it.
class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::string& parent = "/tmp");
  ~TemporaryFolder();

  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The path of a file in it.
  std::string Path(const std::string& name) const { return m_path + "/" + name; }

  /// Makes a file in it. Result: its path.
  std::string Write(const std::string& name, const std::string& contents) const;

  /// What a file in it holds; "(none)" when it cannot be read.
  std::string Read(const std::string& name) const;

  /// The names of everything in it, sorted, a blank behind each.
  std::string Names() const;

 private:
  std::string m_path;
};

#endif
