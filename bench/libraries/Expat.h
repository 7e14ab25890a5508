#ifndef XMLDOM_BENCH_LIBRARIES_EXPAT_H
#define XMLDOM_BENCH_LIBRARIES_EXPAT_H

#include <expat.h>

#include <string>

namespace bench {

/// The three handlers that xmldom installs too; internal entities reach the last one expanded.
struct ExpatHandlers {
  XML_StartElementHandler start;
  XML_EndElementHandler end;
  XML_DefaultHandler other;
};

/// Parses a text in one piece. Result: whether it is well-formed.
bool ParseText(const std::string& text, const ExpatHandlers& handlers, void* userData);

/// Parses a file in pieces. Result: whether it could be read and is well-formed.
bool ParseFile(const std::string& path, const ExpatHandlers& handlers, void* userData);

}  // namespace bench

#endif
