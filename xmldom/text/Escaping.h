#ifndef XMLDOM_TEXT_ESCAPING_H
#define XMLDOM_TEXT_ESCAPING_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/Export.h>
#include <xmldom/base/TextArgument.h>

#include <cstddef>
#include <cstdint>
#include <string>

// Text from outside, written so that every parser reads it as it was, and that this library loses
// nothing of it when it loads what it has written. CMemFile::WriteStrEntities alone does not do
// that: it leaves tabs and line ends as they are, which become blanks in an attribute and are
// dropped from a text, and bytes that no XML document can hold.

namespace xmldom {

/// What a text becomes in XML.
struct EscapedText {
  std::string text;       ///< The text with references; empty when it was refused.
  std::size_t refusedAt;  ///< The offset of a character that XML cannot hold, or npos.

  /// Whether the text could be escaped.
  explicit operator bool() const noexcept { return refusedAt == std::string::npos; }
};

/// What stands beside a text in its element.
enum class TextPlace {
  kAlone,           ///< Nothing: the element has no other child.
  kBesideElements,  ///< Other children; the writer then puts the text in a line of its own.
};

/// Result: the decimal reference to a code point. Hexadecimal ones are not decoded by the library.
inline std::string DecimalReference(std::uint32_t code) {
  return "&#" + std::to_string(code) + ";";
}

/// Result: the reference that has to stand for a character of a text; null when it needs none.
/// Line ends need one: parsers read a carriage return as a line feed, and the library drops both.
inline const char* TextReference(char c) noexcept {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '\n':
      return "&#10;";
    case '\r':
      return "&#13;";
    default:
      return nullptr;
  }
}

/// Result: the reference that has to stand for a character of an attribute value, in quotes of
/// either kind; null when it needs none. Parsers read tabs and line ends in it as blanks.
inline const char* AttributeReference(char c) noexcept {
  switch (c) {
    case '"':
      return "&quot;";
    case '\'':
      return "&apos;";
    case '\t':
      return "&#9;";
    default:
      return TextReference(c);
  }
}

/// Escapes a text as content of an element. White space that the library would drop on loading
/// becomes references: line ends, and blanks and tabs that stand alone between two references or
/// make up the whole text. Beside elements the first character becomes one too, because the
/// indentation before it is then a piece of nothing but white space, and is dropped.
/// Result: the escaped text, or the offset of what XML cannot hold (see FindForbidden).
/// Cost: linear in the text.
XMLDOM_NODISCARD inline EscapedText EscapeText(TextArgument text,
                                               TextPlace place = TextPlace::kAlone) {
  EscapedText escaped = {std::string(), FindForbidden(text)};
  if (!escaped) return escaped;
  escaped.text.reserve(text.Size());
  const char* at = text.Data();
  const char* const end = at + text.Size();
  if (place == TextPlace::kBesideElements && at != end && TextReference(*at) == nullptr) {
    const Character first = ReadCharacter(at, text.Size());
    escaped.text += DecimalReference(first.code);
    at += first.length;
  }
  while (at != end) {
    const char* run = at;  // ends at the next character that needs a reference
    bool isBlank = true;
    for (; run != end && TextReference(*run) == nullptr; ++run) {
      isBlank = isBlank && (*run == ' ' || *run == '\t');
    }
    if (!isBlank) {
      escaped.text.append(at, run);
    } else {
      for (; at != run; ++at) escaped.text += DecimalReference(static_cast<unsigned char>(*at));
    }
    if (run != end) escaped.text += TextReference(*run++);
    at = run;
  }
  return escaped;
}

/// Escapes a text as an attribute value, in quotes of either kind.
/// Result: as for EscapeText. Cost: linear in the text.
XMLDOM_NODISCARD inline EscapedText EscapeAttribute(TextArgument text) {
  EscapedText escaped = {std::string(), FindForbidden(text)};
  if (!escaped) return escaped;
  escaped.text.reserve(text.Size());
  for (const char* at = text.Data(); at != text.Data() + text.Size(); ++at) {
    const char* reference = AttributeReference(*at);
    if (reference == nullptr) {
      escaped.text += *at;
    } else {
      escaped.text += reference;
    }
  }
  return escaped;
}

}  // namespace xmldom

#endif
