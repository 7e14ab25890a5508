#ifndef XMLDOM_TOOLS_DOCUMENT_ENCODINGADVICE_H
#define XMLDOM_TOOLS_DOCUMENT_ENCODINGADVICE_H

#include <string>

namespace tool {

/// Whether a text begins as XML in UTF-16 does: with a byte order mark or with '<' in two bytes.
bool LooksLikeUtf16(const std::string& text);

/// The reason for refusing a text in UTF-16, with a command that converts it.
std::string DescribeUtf16(const std::string& text);

/// The reason for refusing a text whose XML declaration names an encoding that the parser does not
/// know: the name, the encodings that are known, and a command that converts it.
std::string DescribeUnknownEncoding(const std::string& text);

}  // namespace tool

#endif
