#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTFRAME_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTFRAME_H

#include <string>

namespace tool {

struct LossReport;

/// The frame of a document is all that stands outside its root element: the XML declaration, the
/// document type, comments, processing instructions and white space. The library drops it when it
/// loads a document. Frame puts it around the root element again.
///
/// `text` is what the document was loaded from, `report` is that of FindLoss for `text`, and `xml`
/// is the root element as the library writes it now.
/// Result: the bytes of the frame of `text`, with `xml` in the place of the root element. The
/// library writes UTF-8: a frame in another encoding is turned into UTF-8, and its XML declaration
/// then names UTF-8.
std::string Frame(const std::string& text, const LossReport& report, const std::string& xml);

}  // namespace tool

#endif
