#include "harness/Encodings.h"

namespace {

/// 5 KiB of ASCII, with an é (in ISO-8859-1) in every 100 bytes.
std::string LongPiece() {
  std::string piece;
  for (int i = 0; i < 52; ++i) piece += std::string(99, static_cast<char>('a' + i % 26)) + "\xe9";
  return piece;
}

/// The document in ISO-8859-1, without its XML declaration.
std::string Latin1() {
  const std::string piece = LongPiece();
  return "<!--" + piece + "--><?p " + piece + "?><!DOCTYPE r [<!--" + piece + "--><?p " + piece +
         "?><!ENTITY e '" + piece + "'><!ENTITY f SYSTEM '" + piece + "'><!ATTLIST r w CDATA '" +
         piece + "'>]><r v='" + piece + "'>" + piece + "<!--" + piece + "--><?p " + piece +
         "?><![CDATA[" + piece + "]]><b/>" + piece + "&e;</r><!--" + piece + "-->";
}

enum { LITTLE_ENDIAN_UTF16, BIG_ENDIAN_UTF16 };

std::string ToUtf16(const std::string& latin1, int order) {
  std::string bytes = order == LITTLE_ENDIAN_UTF16 ? "\xff\xfe" : "\xfe\xff";
  for (char c : latin1) {
    if (order == BIG_ENDIAN_UTF16) bytes += '\0';
    bytes += c;
    if (order == LITTLE_ENDIAN_UTF16) bytes += '\0';
  }
  return bytes;
}

std::string ReplaceHigh(const std::string& latin1, const std::string& replacement) {
  std::string bytes;
  for (char c : latin1) {
    if (c == '\xe9') {
      bytes += replacement;
    } else {
      bytes += c;
    }
  }
  return bytes;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const EncodedDocument& document) {
  return out << document.encoding;
}

const std::vector<EncodedDocument>& EncodedDocuments() {
  static const std::vector<EncodedDocument> documents = [] {
    const std::string latin1 = Latin1();
    const std::string utf8 = ReplaceHigh(latin1, "\xc3\xa9");
    return std::vector<EncodedDocument>{
        {"UTF-8", utf8, false},
        {"UTF-8 with a mark", "\xef\xbb\xbf" + utf8, false},
        {"UTF-16, little endian", ToUtf16(latin1, LITTLE_ENDIAN_UTF16), true},
        {"UTF-16, big endian", ToUtf16(latin1, BIG_ENDIAN_UTF16), true},
        {"ISO-8859-1", "<?xml version='1.0' encoding='ISO-8859-1'?>" + latin1, false},
        {"US-ASCII", "<?xml version='1.0' encoding='US-ASCII'?>" + ReplaceHigh(latin1, "&#233;"),
         false},
    };
  }();
  return documents;
}
