// Escapes plain text, so that parsers and the library read from XML exactly what the user typed.
// White space that the library would drop when it loads the text again becomes a reference.
// Tested by tests/tool/LosslessProperty_test.cpp and tests/tool/edit_test.bash.

#include <tools/document/Escape.h>

#include <tools/io/SourceText.h>

#include <xmldom/support/MemFile.h>

#include <algorithm>

namespace tool {

namespace {

/// A decimal reference, because the library does not decode hexadecimal ones.
std::string Reference(char c) { return "&#" + std::to_string(static_cast<int>(c)) + ";"; }

/// The reference that has to stand for a character of a text; empty when it needs none. Line ends
/// need one: parsers read a carriage return as a line feed, and the library drops line feeds.
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
    // The library drops white space that stands alone between two references.
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
