#ifndef XMLDOM_TOOLS_IO_SOURCETEXT_H
#define XMLDOM_TOOLS_IO_SOURCETEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

/// A place in a text. Both numbers count from 1; columns count characters, not bytes.
struct SourcePosition {
  std::size_t line;
  std::size_t column;
};

/// Whether XML counts a character as white space: blank, tab, line feed and carriage return.
bool IsSpace(char c);
/// Whether it is a line feed or a carriage return.
bool IsLineEnd(char c);

/// How many bytes the character at `text` has. `size`, at least 1, tells how many bytes of the text
/// follow. Result: 1 for a byte that begins no valid UTF-8 sequence.
std::size_t CharacterLength(const char* text, std::size_t size);

/// One character as a terminal shows it.
struct VisibleCharacter {
  std::string text;
  std::size_t width;  ///< In columns of the terminal.
};

/// The character of `length` bytes at `text`. Each byte of one that is not printable is written as
/// \xHH.
VisibleCharacter Visible(const char* text, std::size_t length);

/// Makes `text` fit one line of a message: each run of white space becomes a blank, other
/// characters are written as Visible gives them. Text behind the first `limit` characters is
/// replaced by "...".
std::string VisibleLine(const std::string& text, std::size_t limit);

/// The place of the byte at `offset`. Lines end with LF, CR LF or CR.
SourcePosition PositionOf(const std::string& text, std::size_t offset);

/// The places of the bytes at several offsets, in the order of these.
/// Cost: linear in the text, and that of sorting the offsets.
std::vector<SourcePosition> PositionsOf(const std::string& text,
                                        const std::vector<std::size_t>& offsets);

}  // namespace tool

#endif
