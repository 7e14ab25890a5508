// Reads a text as XML does: characters in UTF-8, white space, line ends; and makes it visible.
// Bytes that are no valid UTF-8 count as characters of one byte, so that every text can be shown.
// Tested by tests/tool/SourceText_test.cpp and tests/tool/check_test.bash.

#include <tools/io/SourceText.h>

#include <xmldom/base/Characters.h>

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace tool {

namespace {

/// Code points from `first` to `last`, both included.
struct CodeRange {
  std::uint32_t first;
  std::uint32_t last;
};

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

std::size_t CharacterLength(const char* text, std::size_t size) {
  return xmldom::ReadCharacter(text, size).length;
}

VisibleCharacter Visible(const char* text, std::size_t length) {
  const xmldom::Character character = xmldom::ReadCharacter(text, length);
  const std::string shown = xmldom::VisibleCharacter(std::string(text, length));
  if (!xmldom::IsPrintable(character)) return {shown, shown.size()};
  const std::size_t width = IsIn(kMarks, character.code) ? 0 : IsIn(kWide, character.code) ? 2 : 1;
  return {shown, width};
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
  return PositionsOf(text, {offset}).front();
}

std::vector<SourcePosition> PositionsOf(const std::string& text,
                                        const std::vector<std::size_t>& offsets) {
  std::vector<std::size_t> order(offsets.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t first, std::size_t second) {
    return offsets[first] < offsets[second];
  });
  std::vector<SourcePosition> positions(offsets.size());
  SourcePosition position = {1, 1};
  std::size_t at = 0;
  for (const std::size_t index : order) {
    while (at < offsets[index]) {
      const std::size_t length = CharacterLength(&text[at], text.size() - at);
      const bool isHalfOfPair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
      if (IsLineEnd(text[at]) && !isHalfOfPair) {
        ++position.line;
        position.column = 1;
      } else if (!isHalfOfPair) {
        ++position.column;
      }
      at += length;
    }
    const bool splitsPair = at > 0 && at < text.size() && text[at - 1] == '\r' && text[at] == '\n';
    positions[index] = splitsPair ? SourcePosition{position.line + 1, 1} : position;
  }
  return positions;
}

}  // namespace tool
