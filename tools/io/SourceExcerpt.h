#ifndef XMLDOM_TOOLS_IO_SOURCEEXCERPT_H
#define XMLDOM_TOOLS_IO_SOURCEEXCERPT_H

#include <tools/io/SourceText.h>

#include <string>

namespace tool {

/// Shows a place in a text on two lines, as compilers do: the line of `text` at `position`, and
/// below it a caret under the column. Both are indented and end with a line feed. Characters that
/// are not printable are shown as \xHH; a long line is cut on both sides of the column.
/// Result: empty when that line is empty.
std::string SourceExcerpt(const std::string& text, SourcePosition position);

/// What the reason of a problem says behind itself of the tag that the problem is near: ", near
/// <tag>", on one line, with a long tag cut.
std::string NearTag(const std::string& tag);

/// The message for an argument of the command line that cannot be used: where in the argument the
/// problem is, what it is (`reason`), and an excerpt. `what` names the argument, as in "path". The
/// line is told only when the argument has several.
std::string DescribeProblem(const std::string& what, const std::string& argument,
                            SourcePosition position, const std::string& reason);

}  // namespace tool

#endif
