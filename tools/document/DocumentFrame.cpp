#include <tools/document/DocumentFrame.h>

#include <tools/document/LossCheck.h>

namespace tool {

namespace {

/// The only encodings that the parser knows beside those of Unicode are ISO-8859-1 and its part
/// US-ASCII, in which a byte is the number of its character.
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
  // The library ends the root element with a line feed; what followed it has its own.
  framed.append(xml, 0, xml.size() - 1);
  return framed + (after.empty() ? "\n" : after);
}

}  // namespace tool
