#ifndef XMLDOM_TOOLS_IO_RESULTWRITER_H
#define XMLDOM_TOOLS_IO_RESULTWRITER_H

#include <cstddef>
#include <string>

namespace tool {

class Output;

/// Writes the results of one file, each line with the file's name before it when there are several.
class ResultWriter {
 public:
  /// `prefix` stands at the beginning of every line; empty for none.
  ResultWriter(Output& output, const std::string& prefix);

  /// The byte that ends a line, a line feed unless set.
  void SetTerminator(char terminator) { m_terminator = terminator; }

  void Write(const char* text, std::size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  void EndLine() { Write(&m_terminator, 1); }

  bool IsTerminal() const;

 private:
  Output& m_output;
  std::string m_prefix;
  char m_terminator;
  bool m_atLineStart;
};

}  // namespace tool

#endif
