// Turns the bytes of a document into UTF-8 and back. The declaration of the encoding is made to say
// UTF-8 in as many bytes, so that the places of all that follows it stay the same.
// Tested by tests/tool/SourceEncoding_test.cpp.

#include <tools/document/SourceEncoding.h>

#include <tools/io/SourceText.h>
#include <xmldom/base/Characters.h>
#include <xmldom/text/Escaping.h>

#include <strings.h>

#include <algorithm>
#include <cstddef>

namespace tool {

namespace {

const char kByteOrderMark[] = "\xEF\xBB\xBF";
const char kUtf8Name[] = "UTF-8";

bool BeginsWith(const std::string& text, const std::string& beginning) {
  return text.compare(0, beginning.size(), beginning) == 0;
}

bool IsAscii(const std::string& text, std::size_t from) {
  return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool IsSurrogate(unsigned long unit) { return unit >= 0xD800 && unit < 0xE000; }

}  // namespace

void AppendUtf8(unsigned long code, std::string& text) {
  const auto add = [&text](unsigned long byte) { text += static_cast<char>(byte & 0xFF); };
  if (code < 0x80) {
    add(code);
  } else if (code < 0x800) {
    add(0xC0 | code >> 6);
    add(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  } else {
    add(0xF0 | code >> 18);
    add(0x80 | (code >> 12 & 0x3F));
    add(0x80 | (code >> 6 & 0x3F));
    add(0x80 | (code & 0x3F));
  }
}

SourceEncoding::SourceEncoding(const std::string& bytes) : m_kind(kUtf8), m_nameRange{0, 0} {
  if (BeginsWith(bytes, "\xFF\xFE") || BeginsWith(bytes, std::string("<\0", 2))) {
    m_kind = kUtf16LittleEndian;
  } else if (BeginsWith(bytes, "\xFE\xFF") || BeginsWith(bytes, std::string("\0<", 2))) {
    m_kind = kUtf16BigEndian;
  }
  if (IsUtf16()) {
    // A declaration is not longer than this, with any reasonable blanks.
    std::string beginning;
    DecodeUtf16(bytes.substr(0, 1024), beginning);
    FindDeclaredName(beginning);
    return;
  }
  FindDeclaredName(bytes);
  const std::string name = m_declared.empty() ? "" : m_declared.substr(1, m_declared.size() - 2);
  if (strcasecmp(name.c_str(), "ISO-8859-1") == 0) m_kind = kLatin1;
  if (strcasecmp(name.c_str(), "US-ASCII") == 0) m_kind = kAscii;
}

std::string SourceEncoding::Refusal() const {
  return std::string("the encoding of the file, ") + Name() + ", cannot hold this";
}

const char* SourceEncoding::Name() const {
  switch (m_kind) {
    case kLatin1:
      return "ISO-8859-1";
    case kAscii:
      return "US-ASCII";
    case kUtf8:
      return kUtf8Name;
    default:
      return "UTF-16";
  }
}

/// Finds the name of the encoding in the XML declaration, which looks like a start tag.
void SourceEncoding::FindDeclaredName(const std::string& text) {
  const std::size_t begin = BeginsWith(text, kByteOrderMark) ? sizeof kByteOrderMark - 1 : 0;
  if (text.compare(begin, 5, "<?xml") != 0) return;
  const std::size_t end = text.find("?>", begin);
  if (end == std::string::npos) return;
  // An instruction such as <?xml-stylesheet?> is no declaration.
  if (!IsSpace(text[begin + 5])) return;
  const std::string declaration = text.substr(0, end) + '>';
  // The parser refuses any other; and what is not ASCII takes another place in UTF-8.
  if (!IsAscii(declaration, begin)) return;
  StartTag tag(declaration, begin);
  SourceRange name = {0, 0};
  SourceRange value = {0, 0};
  while (tag.Next(name, value)) {
    if (declaration.compare(name.begin, name.end - name.begin, "encoding") != 0) continue;
    // In a shorter place there would be no room for the other name.
    if (value.end - value.begin < sizeof kUtf8Name - 1) return;
    m_nameRange = {value.begin - 1, value.end + 1};
    m_declared = text.substr(m_nameRange.begin, m_nameRange.end - m_nameRange.begin);
  }
}

/// Whether the declaration of a text in UTF-16, if it names an encoding, names this one. The parser
/// refuses any other name.
bool SourceEncoding::IsDeclaredRightly() const {
  if (m_declared.empty()) return true;
  const std::string name = m_declared.substr(1, m_declared.size() - 2);
  const char* const ordered = m_kind == kUtf16BigEndian ? "UTF-16BE" : "UTF-16LE";
  return strcasecmp(name.c_str(), "UTF-16") == 0 || strcasecmp(name.c_str(), ordered) == 0;
}

bool SourceEncoding::Decode(const std::string& bytes, std::string& text,
                            std::string& reason) const {
  if (m_kind == kUtf8) {
    text = bytes;
    return true;
  }
  text.clear();
  if (IsUtf16()) {
    if (!DecodeUtf16(bytes, text)) {
      reason = "no character in UTF-16";
      return false;
    }
    if (!IsDeclaredRightly()) {
      reason = "the text is in UTF-16, and declares another encoding";
      text.resize(m_nameRange.begin);
      return false;
    }
  } else {
    // The parser takes a byte order mark of UTF-8 in front of any declaration.
    if (BeginsWith(bytes, kByteOrderMark)) text = kByteOrderMark;
    for (std::size_t at = text.size(); at < bytes.size(); ++at) {
      const unsigned char byte = static_cast<unsigned char>(bytes[at]);
      if (m_kind == kAscii && byte >= 0x80) {
        reason = "no character in US-ASCII";
        return false;
      }
      AppendUtf8(byte, text);
    }
  }
  if (m_declared.empty()) return true;
  const std::string quote = m_declared.substr(0, 1);
  std::string name = quote + kUtf8Name + quote;
  name.resize(m_declared.size(), ' ');
  text.replace(m_nameRange.begin, m_declared.size(), name);
  return true;
}

/// Result: whether all bytes are characters. Out: `text` holds the characters in front of the first
/// bytes that are none.
bool SourceEncoding::DecodeUtf16(const std::string& bytes, std::string& text) const {
  const auto unitAt = [&](std::size_t at) {
    const unsigned long first = static_cast<unsigned char>(bytes[at]);
    const unsigned long second = static_cast<unsigned char>(bytes[at + 1]);
    return m_kind == kUtf16BigEndian ? first << 8 | second : second << 8 | first;
  };
  std::size_t at = 0;
  for (; at + 1 < bytes.size(); at += 2) {
    const unsigned long unit = unitAt(at);
    if (!IsSurrogate(unit)) {
      AppendUtf8(unit, text);
      continue;
    }
    if (unit >= 0xDC00 || at + 3 >= bytes.size()) return false;
    const unsigned long next = unitAt(at + 2);
    if (next < 0xDC00 || !IsSurrogate(next)) return false;
    AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00), text);
    at += 2;
  }
  return at == bytes.size();
}

std::string SourceEncoding::Encode(const std::string& text) const {
  if (m_kind == kUtf8) return text;
  std::string declared = text.substr(0, m_nameRange.end);
  if (!m_declared.empty()) declared.replace(m_nameRange.begin, m_declared.size(), m_declared);
  const bool keepsMark = !IsUtf16() && BeginsWith(declared, kByteOrderMark);
  const std::string mark = keepsMark ? kByteOrderMark : "";
  return mark + EncodePart(declared.substr(mark.size())) + EncodePart(text.substr(declared.size()));
}

std::string SourceEncoding::EncodePart(const std::string& part) const {
  if (m_kind == kUtf8) return part;
  std::string bytes;
  for (std::size_t at = 0; at < part.size();) {
    const xmldom::Character character = xmldom::ReadCharacter(&part[at], part.size() - at);
    AppendEncoded(character.code, bytes);
    at += character.length;
  }
  return bytes;
}

void SourceEncoding::AppendEncoded(unsigned long code, std::string& bytes) const {
  if (!IsUtf16()) {
    const unsigned long most = m_kind == kLatin1 ? 0xFF : 0x7F;
    bytes += code > most ? '?' : static_cast<char>(code);
  } else if (code >= 0x10000) {
    AppendUnit(0xD800 + ((code - 0x10000) >> 10), bytes);
    AppendUnit(0xDC00 + ((code - 0x10000) & 0x3FF), bytes);
  } else {
    AppendUnit(code, bytes);
  }
}

void SourceEncoding::AppendUnit(unsigned long unit, std::string& bytes) const {
  const char high = static_cast<char>(unit >> 8 & 0xFF);
  const char low = static_cast<char>(unit & 0xFF);
  bytes += m_kind == kUtf16BigEndian ? high : low;
  bytes += m_kind == kUtf16BigEndian ? low : high;
}

std::size_t SourceEncoding::FindForeign(const std::string& text, std::size_t from) const {
  if (m_kind == kUtf8 || IsUtf16()) return std::string::npos;
  const unsigned long most = m_kind == kLatin1 ? 0xFF : 0x7F;
  for (std::size_t at = from; at < text.size();) {
    const xmldom::Character character = xmldom::ReadCharacter(&text[at], text.size() - at);
    if (character.code > most) return at;
    at += character.length;
  }
  return std::string::npos;
}

std::string SourceEncoding::WithReferences(const std::string& text) const {
  return Written(text, [](const std::string& known) { return known; });
}

std::string SourceEncoding::Escape(const std::string& text) const {
  return Written(text, [](const std::string& known) { return xmldom::EscapeText(known).text; });
}

/// A text with references for what the encoding cannot hold; `write` writes what is between these.
std::string SourceEncoding::Written(const std::string& text,
                                    std::string (*write)(const std::string& known)) const {
  std::string written;
  std::size_t done = 0;
  for (std::size_t at = FindForeign(text); at != std::string::npos; at = FindForeign(text, done)) {
    const xmldom::Character character = xmldom::ReadCharacter(&text[at], text.size() - at);
    written += write(text.substr(done, at - done));
    written += xmldom::DecimalReference(character.code);
    done = at + character.length;
  }
  return written + write(text.substr(done));
}

}  // namespace tool
