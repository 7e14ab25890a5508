#ifndef XMLDOM_TOOLS_DOCUMENTLOAD_H
#define XMLDOM_TOOLS_DOCUMENTLOAD_H

#include "Owned.h"

class IXMLDOMDocument2;

namespace tool {

struct Input;

/// Makes the tree of an input.
/// Result: the document; null when the input is not well-formed, which has been said, with the
/// place, on standard error.
Owned<IXMLDOMDocument2> LoadDocument(const Input& input);

}  // namespace tool

#endif
