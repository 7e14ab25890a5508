// Shows the line of a text that a message is about, with a caret under the column.
// The line is cut into cells, one for each character, with the width that a terminal gives them.
// Tested by tests/tool/check_test.bash.

#include <tools/io/SourceExcerpt.h>

#include <algorithm>
#include <vector>

namespace tool {

namespace {

// How many columns of a long line are shown before and behind the place.
const std::size_t kWidthBefore = 40;
const std::size_t kWidthAfter = 36;
const std::size_t kTabWidth = 8;
const char kIndent[] = "  ";
const char kCut[] = "...";
// How many characters of a tag are shown.
const std::size_t kTagLimit = 60;

/// The cell of one character. A tab stays a tab, which moves the line and the caret alike.
VisibleCharacter MakeCell(const char* text, std::size_t length) {
  if (*text == '\t') return {"\t", kTabWidth};
  return Visible(text, length);
}

/// What is written below a cell that stands before the caret, so that both lines stay aligned.
std::string Filler(const VisibleCharacter& cell) {
  return cell.text == "\t" ? cell.text : std::string(cell.width, ' ');
}

/// The offset at which a line begins; the size of the text when it has fewer lines.
std::size_t LineBegin(const std::string& text, std::size_t line) {
  std::size_t at = 0;
  while (line > 1) {
    at = text.find_first_of("\r\n", at);
    if (at == std::string::npos) return text.size();
    if (text.compare(at, 2, "\r\n") == 0) ++at;
    ++at;
    --line;
  }
  return at;
}

/// How many cells, from `begin` on, take at most `room` columns together.
template <class Iterator>
std::size_t CountThatFits(Iterator begin, Iterator end, std::size_t room) {
  std::size_t count = 0;
  for (; begin != end && begin->width <= room; ++begin, ++count) room -= begin->width;
  return count;
}

}  // namespace

std::string SourceExcerpt(const std::string& text, SourcePosition position) {
  std::size_t at = LineBegin(text, position.line);
  const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());

  // Only the cells around the column are made, so that a line of any length costs little memory.
  const std::size_t target = position.column - 1;
  const std::size_t firstMade = target > kWidthBefore ? target - kWidthBefore : 0;
  std::vector<VisibleCharacter> cells;
  for (std::size_t index = 0; at < end && index <= target + kWidthAfter; ++index) {
    const std::size_t length = CharacterLength(&text[at], end - at);
    if (index >= firstMade) cells.push_back(MakeCell(&text[at], length));
    at += length;
  }
  if (cells.empty()) return std::string();

  const std::size_t caret = std::min(target - firstMade, cells.size());
  const auto caretCell = cells.begin() + static_cast<std::ptrdiff_t>(caret);
  const std::size_t before =
      CountThatFits(std::make_reverse_iterator(caretCell), cells.rend(), kWidthBefore);
  const std::size_t after = CountThatFits(caretCell, cells.end(), kWidthAfter);
  const bool cutsFront = firstMade > 0 || before < caret;
  const bool cutsBack = at < end || caret + after < cells.size();

  std::string source = kIndent;
  std::string marker = kIndent;
  if (cutsFront) {
    source += kCut;
    marker += std::string(sizeof kCut - 1, ' ');
  }
  for (std::size_t i = caret - before; i < caret + after; ++i) {
    source += cells[i].text;
    if (i < caret) marker += Filler(cells[i]);
  }
  if (cutsBack) source += kCut;
  return source + "\n" + marker + "^\n";
}

std::string NearTag(const std::string& tag) { return ", near " + VisibleLine(tag, kTagLimit); }

std::string DescribeProblem(const std::string& what, const std::string& argument,
                            SourcePosition position, const std::string& reason) {
  std::string text =
      "column " + std::to_string(position.column) + " of the " + what + ": " + reason;
  if (std::any_of(argument.begin(), argument.end(), IsLineEnd)) {
    text = "line " + std::to_string(position.line) + ", " + text;
  }
  const std::string excerpt = SourceExcerpt(argument, position);
  if (!excerpt.empty()) text += "\n" + excerpt.substr(0, excerpt.size() - 1);
  return text;
}

}  // namespace tool
