// Reads a text as XML does: characters in UTF-8, white space, line ends; and makes it visible.
// Bytes that are no valid UTF-8 count as characters of one byte, so that every text can be shown.
// Tested by tests/tool/check_test.bash.

#include <tools/io/SourceText.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace tool {

namespace {

/// The form of the UTF-8 sequences of one length: (first byte & mask) == lead.
struct SequenceForm {
  unsigned char mask;
  unsigned char lead;
  std::size_t length;
  std::uint32_t smallest;  // the least code point that needs this length
};

const SequenceForm kSequenceForms[] = {
    {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

/// The code point of the UTF-8 sequence at `text`, of which `size` bytes are there.
/// Result: for a byte that begins no valid sequence, the byte itself. Out: `length`, which is 1 for
/// such a byte.
std::uint32_t Decode(const char* text, std::size_t size, std::size_t* length) {
  const unsigned char first = static_cast<unsigned char>(text[0]);
  *length = 1;
  for (const SequenceForm& form : kSequenceForms) {
    if ((first & form.mask) != form.lead) continue;
    if (size < form.length) return first;
    std::uint32_t code = first & static_cast<unsigned char>(~form.mask);
    for (std::size_t i = 1; i < form.length; ++i) {
      const unsigned char next = static_cast<unsigned char>(text[i]);
      if ((next & 0xC0) != 0x80) return first;
      code = code << 6 | (next & 0x3F);
    }
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < form.smallest || code > 0x10FFFF || isSurrogate) return first;
    *length = form.length;
    return code;
  }
  return first;
}

/// Code points from `first` to `last`, both included.
struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
};

// Control characters, characters that change the direction of a line, and invisible ones.
const CodeRange kUnprintable[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x200B, 0x200F},
                                  {0x2028, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}};

// Combining marks are drawn on the character before them and take no column.
const CodeRange kMarks[] = {{0x0300, 0x036F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}};

// East Asian scripts and pictographs take two columns.
const CodeRange kWide[] = {
    {0x1100, 0x115F}, {0x2E80, 0xA4CF}, {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
    {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0x1F300, 0x1F64F}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};

template <std::size_t kCount>
bool IsIn(const CodeRange (&ranges)[kCount], std::uint32_t code) {
  return std::any_of(ranges, ranges + kCount, [code](const CodeRange& range) {
    return code >= range.first && code <= range.last;
  });
}

}  // namespace

bool IsSpace(char c) { return c == ' ' || c == '\t' || IsLineEnd(c); }

bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

bool IsXmlCharacter(const char* text, std::size_t length) {
  std::size_t decoded;
  const std::uint32_t code = Decode(text, length, &decoded);
  const bool isStray = decoded == 1 && code >= 0x80;
  return !isStray && (code >= 0x20 || IsSpace(*text)) && code != 0xFFFE && code != 0xFFFF;
}

std::size_t CharacterLength(const char* text, std::size_t size) {
  std::size_t length;
  Decode(text, size, &length);
  return length;
}

VisibleCharacter Visible(const char* text, std::size_t length) {
  std::size_t decoded;
  const std::uint32_t code = Decode(text, length, &decoded);
  const bool isStray = decoded == 1 && code >= 0x80;
  if (!isStray && !IsIn(kUnprintable, code)) {
    const std::size_t width = IsIn(kMarks, code) ? 0 : IsIn(kWide, code) ? 2 : 1;
    return {std::string(text, length), width};
  }
  std::string escapes;
  for (std::size_t i = 0; i < length; ++i) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned char>(text[i]));
    escapes += escape;
  }
  return {escapes, escapes.size()};
}

std::string VisibleLine(const std::string& text, std::size_t limit) {
  std::string line;
  std::size_t characters = 0;
  for (std::size_t at = 0; at < text.size();) {
    if (characters == limit) return line + "...";
    std::size_t length = CharacterLength(&text[at], text.size() - at);
    if (IsSpace(text[at])) {
      while (at + length < text.size() && IsSpace(text[at + length])) ++length;
      line += ' ';
    } else {
      line += Visible(&text[at], length).text;
    }
    at += length;
    ++characters;
  }
  return line;
}

SourcePosition PositionOf(const std::string& text, std::size_t offset) {
  SourcePosition position = {1, 1};
  for (std::size_t at = 0; at < offset;) {
    const std::size_t length = CharacterLength(&text[at], text.size() - at);
    const bool isHalfOfPair = text[at] == '\r' && at + 1 < offset && text[at + 1] == '\n';
    if (IsLineEnd(text[at]) && !isHalfOfPair) {
      ++position.line;
      position.column = 1;
    } else if (!isHalfOfPair) {
      ++position.column;
    }
    at += length;
  }
  return position;
}

}  // namespace tool
