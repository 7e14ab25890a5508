#ifndef XMLDOM_TOOLS_DOCUMENT_ESCAPE_H
#define XMLDOM_TOOLS_DOCUMENT_ESCAPE_H

#include <string>

namespace tool {

/// Escapes `text` as the content of an element. Every parser reads exactly `text` from the result,
/// and the library drops nothing of it when it loads it again.
/// Bad input: characters that cannot stand in an XML document are not escaped.
std::string EscapeText(const std::string& text);

/// Escapes `text` as an attribute value in single quotes, from which every parser reads exactly
/// `text`.
/// Bad input: as above.
std::string EscapeAttribute(const std::string& text);

}  // namespace tool

#endif
