#ifndef XMLDOM_BASE_CHARACTERS_H
#define XMLDOM_BASE_CHARACTERS_H

#include <xmldom/base/TextArgument.h>

#include <cstddef>
#include <cstdint>
#include <string>

// The characters of a text in UTF-8: which of them XML can hold, and how a message shows them.

namespace xmldom {

/// One character of a text in UTF-8.
struct Character {
  std::uint32_t code;  ///< The code point; the byte itself where the text is no valid UTF-8.
  std::size_t length;  ///< How many bytes it has; 1 where the text is no valid UTF-8.
  bool isValid;        ///< Whether the bytes are valid UTF-8.
};

/// Reads the character at `text`, where `size` bytes follow, at least 1. Surrogates, code points
/// above U+10FFFF and sequences that are longer than they need to be are not valid.
inline Character ReadCharacter(const char* text, std::size_t size) noexcept {
  const unsigned char first = static_cast<unsigned char>(text[0]);
  const Character stray = {first, 1, first < 0x80};
  const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 1 || first >= 0xF8 || length > size) return stray;
  // The first byte holds as many bits of the code point as its length leaves.
  std::uint32_t code = first & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return stray;
    code = code << 6 | (next & 0x3Fu);
  }
  const std::uint32_t smallest = length == 2 ? 0x80 : length == 3 ? 0x800 : 0x10000;
  const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
  if (code < smallest || code > 0x10FFFF || isSurrogate) return stray;
  return Character{code, length, true};
}

/// Whether a character can stand in an XML document, as itself or as a reference.
inline bool IsXmlCharacter(const Character& character) noexcept {
  const std::uint32_t code = character.code;
  if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
  return character.isValid && code != 0xFFFE && code != 0xFFFF;
}

/// Finds what no XML document can hold: a control character other than tab, line feed and carriage
/// return, a byte that is no valid UTF-8, U+FFFE and U+FFFF. A NUL byte is a control character.
/// Result: the offset of the first such character; std::string::npos when there is none.
/// Cost: linear in the text.
inline std::size_t FindForbidden(TextArgument text) noexcept {
  for (std::size_t at = 0; at < text.Size();) {
    const Character character = ReadCharacter(text.Data() + at, text.Size() - at);
    if (!IsXmlCharacter(character)) return at;
    at += character.length;
  }
  return std::string::npos;
}

/// Whether a character is shown as it is: it is no control character, no character that changes the
/// direction of a line, and no invisible one.
inline bool IsPrintable(const Character& character) noexcept {
  struct Range {
    std::uint32_t first;
    std::uint32_t last;
  };
  static const Range kUnprintable[] = {
      {0x00, 0x1F},     {0x7F, 0x9F},     {0xAD, 0xAD},     {0x61C, 0x61C},   {0x200B, 0x200F},
      {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}, {0xE0000, 0xE007F}};
  for (const Range& range : kUnprintable) {
    if (character.code >= range.first && character.code <= range.last) return false;
  }
  return character.isValid;
}

/// Whether a byte may begin a name in XML, as far as one byte can tell: a letter, '_', ':', or a
/// byte of a character beyond ASCII.
inline bool IsNameStartByte(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) >= 0x80;
}

/// Whether a byte may stand in a name in XML, as far as one byte can tell: one that may begin it, a
/// digit, '-' or '.'.
inline bool IsNameByte(char c) noexcept {
  return IsNameStartByte(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

/// Result: the first character of a text as a terminal may show it. Each byte of one that is not
/// printable is written as \\xHH, with its two hexadecimal digits. Bad input: an empty text gives
/// an empty one.
inline std::string VisibleCharacter(TextArgument text) {
  if (text.Size() == 0) return std::string();
  const Character character = ReadCharacter(text.Data(), text.Size());
  if (IsPrintable(character)) return std::string(text.Data(), character.length);
  const char* const digits = "0123456789ABCDEF";
  std::string escapes;
  for (std::size_t i = 0; i < character.length; ++i) {
    const unsigned char byte = static_cast<unsigned char>(text.Data()[i]);
    escapes += "\\x";
    escapes += digits[byte >> 4];
    escapes += digits[byte & 0xF];
  }
  return escapes;
}

/// Makes a text from outside fit one line of a log or of a terminal: what is not printable, line
/// ends among it, is written as VisibleCharacter gives it.
/// Result: at most `limit` bytes; "..." stands at the end of a text that is cut off, which it is
/// behind a whole character. Bad input: for a `limit` below 3 there may be 3 bytes.
inline std::string OneLine(TextArgument text, std::size_t limit = 256) {
  std::string line;
  std::size_t kept = 0;  // how much of the line stays when "..." has to follow
  for (std::size_t at = 0; at < text.Size();) {
    const Character character = ReadCharacter(text.Data() + at, text.Size() - at);
    const std::string shown = VisibleCharacter(std::string(text.Data() + at, character.length));
    if (line.size() + shown.size() > limit) return line.substr(0, kept) + "...";
    line += shown;
    if (line.size() + 3 <= limit) kept = line.size();
    at += character.length;
  }
  return line;
}

}  // namespace xmldom

#endif
