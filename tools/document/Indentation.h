#ifndef XMLDOM_TOOLS_DOCUMENT_INDENTATION_H
#define XMLDOM_TOOLS_DOCUMENT_INDENTATION_H

#include <tools/document/StartTag.h>

#include <cstddef>
#include <string>

namespace tool {

// How the lines of a text are laid out around a place, for what is put in or taken out there. Lines
// end with LF, CR LF or CR. Cost of each: linear in the white space around the place, except where
// it says otherwise.

/// What separates something from what stands in front of it: the white space there, from its last
/// line end on. All that is put beside it gets the same.
std::string SeparatorBefore(const std::string& text, std::size_t at);

/// Whether nothing but blanks and tabs stands before a place in its line.
bool BeginsLine(const std::string& text, std::size_t at);

/// The blanks and tabs directly before a place.
std::string IndentBefore(const std::string& text, std::size_t at);

/// The line end before a place that begins its line; in the first line, the first one of the text,
/// or a line feed when it has none. Cost: linear in the first line.
std::string LineEndBefore(const std::string& text, std::size_t at);

/// A part of the text together with the lines that it stands on, when nothing else stands on them:
/// with the indentation before it and the line end behind it. Otherwise the part as it is.
SourceRange WithLines(const std::string& text, const SourceRange& part);

/// A text with its line feeds written as `lineEnd`. Those of CR LF pairs stay as they are.
/// Cost: linear in the text.
std::string WithLineEnds(const std::string& text, const std::string& lineEnd);

}  // namespace tool

#endif
