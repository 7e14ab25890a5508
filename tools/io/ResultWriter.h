#ifndef XMLDOM_TOOLS_IO_RESULTWRITER_H
#define XMLDOM_TOOLS_IO_RESULTWRITER_H

#include <cstddef>
#include <string>

namespace tool {

class Output;

/// Writes the results of a command for one of its files. With several files, the name of the file
/// stands before each line, as grep does it. Where the output is a terminal, both are made harmless
/// for it (see TerminalText.h).
class ResultWriter {
 public:
  /// `prefix` is written at the beginning of every line; it may be empty. `output` is borrowed.
  ResultWriter(Output& output, const std::string& prefix);

  /// Sets the byte that ends a line, which otherwise is a line feed.
  void SetTerminator(char terminator) { m_terminator = terminator; }

  /// `text` must not begin or end within a character.
  void Write(const char* text, std::size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  /// Writes a text that also a terminal gets as it is, such as one with colors.
  void WriteHarmless(const std::string& text) { WriteLines(text.data(), text.size()); }
  void EndLine() { WriteLines(&m_terminator, 1); }

  bool IsTerminal() const { return m_isTerminal; }

 private:
  void WriteLines(const char* text, std::size_t size);

  Output& m_output;
  const bool m_isTerminal;
  const std::string m_prefix;
  char m_terminator;
  bool m_atLineStart;
};

}  // namespace tool

#endif
