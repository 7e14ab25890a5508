#ifndef XMLDOM_TOOLS_DOCUMENT_ENCODINGADVICE_H
#define XMLDOM_TOOLS_DOCUMENT_ENCODINGADVICE_H

#include <string>

namespace tool {

/// The reason for refusing a text in UTF-16, with a command that converts it.
std::string DescribeUtf16(const std::string& text);

/// The reason for refusing a text whose XML declaration names an encoding that the parser does not
/// know: the name, the encodings that are known, and a command that converts it.
std::string DescribeUnknownEncoding(const std::string& text);

}  // namespace tool

#endif
