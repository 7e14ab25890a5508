#ifndef XMLDOM_TOOLS_DOCUMENT_ESCAPE_H
#define XMLDOM_TOOLS_DOCUMENT_ESCAPE_H

#include <string>

namespace tool {

/// `text` as the content of an element: every parser reads exactly `text` from it, and the library
/// drops nothing of it when it loads it again. Bad input: bytes that cannot stand in XML.
std::string EscapeText(const std::string& text);

/// `text` as an attribute value in single quotes, which every parser reads as exactly `text`. Bad
/// input: as above.
std::string EscapeAttribute(const std::string& text);

}  // namespace tool

#endif
