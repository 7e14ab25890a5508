#ifndef XMLDOM_TOOLS_IO_SOURCETEXT_H
#define XMLDOM_TOOLS_IO_SOURCETEXT_H

#include <cstddef>
#include <string>

namespace tool {

/// A place in a text; both numbers count from 1, columns in characters.
struct SourcePosition {
  std::size_t line;
  std::size_t column;
};

/// White space and line ends as XML has them.
bool IsSpace(char c);
bool IsLineEnd(char c);

/// Bytes of the character at `text`, of which `size` bytes, at least one, are there: those of a
/// UTF-8 sequence, or 1 for a byte that does not begin a valid one.
std::size_t CharacterLength(const char* text, std::size_t size);

/// Whether the character of `length` bytes at `text` can stand in an XML document.
bool IsXmlCharacter(const char* text, std::size_t length);

/// One character as a terminal can show it.
struct VisibleCharacter {
  std::string text;
  std::size_t width;  ///< In columns of the terminal.
};

/// The character of `length` bytes at `text`; what is not printable is written as \xHH, byte by
/// byte.
VisibleCharacter Visible(const char* text, std::size_t length);

/// `text` as part of one line of a message: runs of white space as one blank, the rest visible, cut
/// to `limit` characters.
std::string VisibleLine(const std::string& text, std::size_t limit);

/// Where the byte at `offset` stands. Lines end with LF, CR LF or CR.
SourcePosition PositionOf(const std::string& text, std::size_t offset);

}  // namespace tool

#endif
