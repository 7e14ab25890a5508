#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTFRAME_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTFRAME_H

#include <string>

namespace tool {

struct LossReport;

/// Puts what stood around the root element of `text` around `xml`, which is what the library writes
/// of a document: the bytes as they are. Where they are in another encoding than UTF-8 they are
/// turned into it, and so is the name of the encoding.
/// `report` is that of FindLoss for `text`, which the library has loaded.
std::string Frame(const std::string& text, const LossReport& report, const std::string& xml);

}  // namespace tool

#endif
