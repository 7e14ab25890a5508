#ifndef XMLDOM_TOOLS_IO_DIAGNOSTICS_H
#define XMLDOM_TOOLS_IO_DIAGNOSTICS_H

#include <tools/io/SourceText.h>

#include <string>

namespace tool {

/// Says on standard error, in the name of the tool, what went wrong.
void Complain(const std::string& text);

/// Says it about a file.
void ComplainAbout(const std::string& file, const std::string& text);

/// Says it about a place in a file, and shows the place.
void ComplainAt(const std::string& file, const std::string& text, SourcePosition position,
                const std::string& reason);

/// Remarks on a file, without complaint.
void Remark(const std::string& file, const std::string& text);

/// Has the library's log events said the same way, every line of them.
void SayLogEvents();

}  // namespace tool

#endif
