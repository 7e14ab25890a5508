#ifndef XMLDOM_TOOLS_DOCUMENT_REFERENCES_H
#define XMLDOM_TOOLS_DOCUMENT_REFERENCES_H

#include <cstddef>

namespace tool {

/// Whether the library writes a reference, of `size` bytes from '&' to ';', with the same meaning
/// as it has in the text: it does so with character references and the five predefined entities.
bool IsPlainReference(const char* reference, std::size_t size);

/// Whether a reference, which the parser has accepted, stands for a tab or a line break.
bool IsBreakReference(const char* reference);

}  // namespace tool

#endif
