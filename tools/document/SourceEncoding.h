#ifndef XMLDOM_TOOLS_DOCUMENT_SOURCEENCODING_H
#define XMLDOM_TOOLS_DOCUMENT_SOURCEENCODING_H

#include <tools/document/StartTag.h>

#include <cstddef>
#include <string>

namespace tool {

/// The encoding of a document, and the way from its bytes to UTF-8 and back. Known are those that
/// the parser knows: UTF-8, UTF-16 in both byte orders, ISO-8859-1 and US-ASCII.
///
/// In UTF-8, the text declares UTF-8, so that it can be parsed: that name, and blanks behind it,
/// take the place of the other name.
class SourceEncoding {
 public:
  /// Finds the encoding out, from the byte order mark, the first characters and the XML
  /// declaration. One that is not known counts as UTF-8, and the parser will refuse the text.
  explicit SourceEncoding(const std::string& bytes);

  bool IsUtf8() const { return m_kind == kUtf8; }

  /// Whether it is UTF-16, in either byte order. The first two bytes tell.
  bool IsUtf16() const { return m_kind == kUtf16LittleEndian || m_kind == kUtf16BigEndian; }

  /// The message for a character that the encoding cannot hold.
  std::string Refusal() const;

  /// Result: whether `bytes`, from which this object was made, can be decoded: a text in UTF-16
  /// that declares another encoding cannot. Out: `text` is then the text in UTF-8; otherwise it is
  /// the part in front of what is wrong, which `reason` tells.
  /// Cost: linear in the bytes.
  bool Decode(const std::string& bytes, std::string& text, std::string& reason) const;

  /// The reverse of Decode. `text` begins with the same XML declaration as the text from Decode.
  /// Bad input: a character that the encoding cannot hold becomes '?'. Cost: linear in the text.
  std::string Encode(const std::string& text) const;

  /// The reverse of Decode for a part of the text behind the XML declaration.
  std::string EncodePart(const std::string& part) const;

  /// Finds a character that the encoding cannot hold. Result: its offset, from `from` on; npos when
  /// there is none. Cost: linear in the text.
  std::size_t FindForeign(const std::string& text, std::size_t from = 0) const;

  /// Writes references for the characters of `text`, which is the text of an element or the value
  /// of an attribute, that the encoding cannot hold. Cost: linear in the text.
  std::string WithReferences(const std::string& text) const;

  /// Escapes a plain text as content of an element, as xmldom::EscapeText does, and writes
  /// references for what the encoding cannot hold. The library loses nothing of it either: white
  /// space that would stand alone between references becomes references too.
  /// Cost: linear in the text.
  std::string Escape(const std::string& text) const;

 private:
  enum Kind { kUtf8, kUtf16LittleEndian, kUtf16BigEndian, kLatin1, kAscii };

  const char* Name() const;
  bool IsDeclaredRightly() const;
  void FindDeclaredName(const std::string& text);
  bool DecodeUtf16(const std::string& bytes, std::string& text) const;
  std::string Written(const std::string& text, std::string (*write)(const std::string&)) const;
  void AppendEncoded(unsigned long code, std::string& bytes) const;
  void AppendUnit(unsigned long unit, std::string& bytes) const;

  Kind m_kind;
  std::string m_declared;   // the name in the declaration with its quotes; empty without one
  SourceRange m_nameRange;  // where that stands in the text in UTF-8
};

/// Appends the character of a code point to a text in UTF-8.
void AppendUtf8(unsigned long code, std::string& text);

}  // namespace tool

#endif
