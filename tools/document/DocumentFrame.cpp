// Puts a document together again: what stood before and behind the root element in the file, and in
// between the root element as the library writes it. Offsets in the file come from the LossReport.
// Tested by tests/tool/format_in_place_test.bash and tests/tool/LosslessProperty_test.cpp.

#include <tools/document/DocumentFrame.h>

#include <tools/document/LossCheck.h>
#include <tools/document/SourceEncoding.h>

namespace tool {

namespace {

/// Turns a text in another encoding into UTF-8. A text in UTF-16 has been turned into UTF-8 before;
/// beside these the parser knows only ISO-8859-1 and US-ASCII, in which each byte is the code point
/// of a character.
std::string ToUtf8(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) AppendUtf8(static_cast<unsigned char>(byte), text);
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
