// Reads the layout of a text around a place, where the text itself shows it. Nothing is assumed
// about the style of the whole document. Tested by tests/tool/Edit_test.cpp.

#include <tools/document/Indentation.h>

#include <tools/io/SourceText.h>

namespace tool {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::size_t SkipBlanksBack(const std::string& text, std::size_t at) {
  while (at > 0 && IsBlank(text[at - 1])) --at;
  return at;
}

/// Where the line end begins that ends at `at`; `at` itself when there is none.
std::size_t LineEndBegin(const std::string& text, std::size_t at) {
  if (at == 0 || !IsLineEnd(text[at - 1])) return at;
  const bool isPair = text[at - 1] == '\n' && at > 1 && text[at - 2] == '\r';
  return at - (isPair ? 2 : 1);
}

/// Where the line end ends that begins at `at`; `at` itself when there is none.
std::size_t LineEndEnd(const std::string& text, std::size_t at) {
  if (at >= text.size() || !IsLineEnd(text[at])) return at;
  return at + (text.compare(at, 2, "\r\n") == 0 ? 2 : 1);
}

/// Whether a line begins at `at`; behind a byte order mark the first one does.
bool IsLineBegin(const std::string& text, std::size_t at) {
  if (at == 0 || IsLineEnd(text[at - 1])) return true;
  return at == 3 && text.compare(0, 3, "\xEF\xBB\xBF") == 0;
}

}  // namespace

std::string SeparatorBefore(const std::string& text, std::size_t at) {
  const std::size_t begin = LineEndBegin(text, SkipBlanksBack(text, at));
  return text.substr(begin, at - begin);
}

bool BeginsLine(const std::string& text, std::size_t at) {
  return IsLineBegin(text, SkipBlanksBack(text, at));
}

std::string IndentBefore(const std::string& text, std::size_t at) {
  const std::size_t begin = SkipBlanksBack(text, at);
  return text.substr(begin, at - begin);
}

std::string LineEndBefore(const std::string& text, std::size_t at) {
  const std::size_t end = SkipBlanksBack(text, at);
  const std::size_t begin = LineEndBegin(text, end);
  if (begin < end) return text.substr(begin, end - begin);
  const std::size_t first = text.find_first_of("\r\n");
  if (first == std::string::npos) return "\n";
  return text.substr(first, LineEndEnd(text, first) - first);
}

SourceRange WithLines(const std::string& text, const SourceRange& part) {
  const std::size_t begin = SkipBlanksBack(text, part.begin);
  std::size_t end = part.end;
  while (end < text.size() && IsBlank(text[end])) ++end;
  const std::size_t next = LineEndEnd(text, end);
  if (!IsLineBegin(text, begin) || next == end) return part;
  return {begin, next};
}

std::string WithLineEnds(const std::string& text, const std::string& lineEnd) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool isOfPair = at > 0 && text[at - 1] == '\r';
    if (text[at] == '\n' && !isOfPair) {
      result += lineEnd;
    } else {
      result += text[at];
    }
  }
  return result;
}

}  // namespace tool
