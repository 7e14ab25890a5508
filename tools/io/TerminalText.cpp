// Makes text from outside harmless for a terminal.
// Tested by tests/tool/TerminalText_test.cpp.

#include <tools/io/TerminalText.h>

#include <xmldom/base/Characters.h>

namespace tool {

namespace {

bool ChangesDirection(std::uint32_t code) {
  return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

bool IsObeyed(const xmldom::Character& character) {
  const std::uint32_t code = character.code;
  const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
  return isControl || ChangesDirection(code) || !character.isValid;
}

/// Whether the character at `at` is a part of the layout: a tab or a line end.
bool IsLayout(const std::string& text, std::size_t at) {
  return text[at] == '\n' || text[at] == '\t' || text.compare(at, 2, "\r\n") == 0;
}

std::string Escaped(const std::string& text, bool keepsLayout) {
  std::string shown;
  for (std::size_t at = 0; at < text.size();) {
    const xmldom::Character character = xmldom::ReadCharacter(&text[at], text.size() - at);
    const std::string bytes = text.substr(at, character.length);
    const bool isKept = !IsObeyed(character) || (keepsLayout && IsLayout(text, at));
    shown += isKept ? bytes : xmldom::VisibleCharacter(bytes);
    at += character.length;
  }
  return shown;
}

}  // namespace

std::string ForTerminal(const std::string& text) { return Escaped(text, true); }

std::string ForTerminalLine(const std::string& text) { return Escaped(text, false); }

}  // namespace tool
