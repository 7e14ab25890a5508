#include <tools/document/Escape.h>

#include <tools/io/SourceText.h>

#include <xmldom/support/MemFile.h>

#include <algorithm>

namespace tool {

namespace {

// Decimal, because the library does not read hexadecimal numbers.
std::string Reference(char c) { return "&#" + std::to_string(static_cast<int>(c)) + ";"; }

/// The reference that a character of a text has to be, or an empty text for one that can stand as
/// it is. Parsers read a carriage return as a line feed, and the library drops line feeds.
std::string TextReference(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    default:
      return IsLineEnd(c) ? Reference(c) : std::string();
  }
}

}  // namespace

std::string EscapeText(const std::string& text) {
  std::string escaped;
  for (auto at = text.begin(); at != text.end();) {
    const auto end = std::find_if(at, text.end(), [](char c) { return !TextReference(c).empty(); });
    // White space alone between references is dropped by the library.
    if (std::all_of(at, end, IsSpace)) {
      std::for_each(at, end, [&escaped](char c) { escaped += Reference(c); });
    } else {
      escaped.append(at, end);
    }
    if (end == text.end()) break;
    escaped += TextReference(*end);
    at = end + 1;
  }
  return escaped;
}

std::string EscapeAttribute(const std::string& text) {
  CMemFile entities(static_cast<unsigned int>(text.size()));
  entities.WriteStrEntities(text.c_str());
  std::string escaped;
  for (const char* at = entities.GetAsStr(); *at != '\0'; ++at) {
    const bool isBreak = *at == '\t' || IsLineEnd(*at);
    escaped += isBreak ? Reference(*at) : std::string(1, *at);
  }
  return escaped;
}

}  // namespace tool
