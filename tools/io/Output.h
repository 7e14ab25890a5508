#ifndef XMLDOM_TOOLS_IO_OUTPUT_H
#define XMLDOM_TOOLS_IO_OUTPUT_H

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace tool {

/// A write has failed; the text gives the reason.
class OutputError : public std::runtime_error {
 public:
  explicit OutputError(int errorNumber);
};

/// A descriptor that is written to through a buffer.
/// Effects: every member that writes throws an OutputError as soon as the system refuses a byte.
class Output {
 public:
  /// Takes the descriptor over. With a negative one, the first byte that reaches it is refused.
  explicit Output(int descriptor);
  /// Closes the descriptor; what has not been flushed is lost.
  ~Output();

  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  void Write(const char* data, std::size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  void Flush();
  /// Flushes and closes. Some file systems report only then that bytes were not stored.
  void Finish();

  bool IsTerminal() const;

 private:
  void WriteThrough(const char* data, std::size_t size);

  int m_descriptor;
  std::vector<char> m_buffer;
};

}  // namespace tool

#endif
