// Puts a document together again: what stood before and behind the root element in the file, and in
// between the root element as the library writes it. Offsets in the file come from the LossReport.
// Tested by tests/tool/edit_in_place_test.bash and tests/tool/LosslessProperty_test.cpp.

#include <tools/document/DocumentFrame.h>

#include <tools/document/LossCheck.h>

namespace tool {

namespace {

/// Turns a text in another encoding into UTF-8. A text in UTF-16 has been turned into UTF-8 before;
/// beside these the parser knows only ISO-8859-1 and US-ASCII, in which each byte is the code point
/// of a character.
std::string ToUtf8(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | byte >> 6);
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
  }
  return text;
}

}  // namespace

std::string Frame(const std::string& text, const LossReport& report, const std::string& xml) {
  std::string framed = text.substr(0, report.declarationEnd);
  std::string before = text.substr(report.declarationEnd, report.rootBegin - report.declarationEnd);
  std::string after = text.substr(report.rootEnd);
  if (report.encodingEnd != 0) {
    framed.replace(report.encodingBegin, report.encodingEnd - report.encodingBegin, "UTF-8");
    before = ToUtf8(before);
    after = ToUtf8(after);
  }
  framed += before;
  // The library ends the root element with a line feed, but `after` holds the one of the file.
  framed.append(xml, 0, xml.size() - 1);
  return framed + (after.empty() ? "\n" : after);
}

}  // namespace tool
