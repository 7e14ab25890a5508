#ifndef XMLDOM_TOOLS_IO_DIAGNOSTICS_H
#define XMLDOM_TOOLS_IO_DIAGNOSTICS_H

#include <tools/io/SourceText.h>

#include <string>

namespace tool {

// Where standard error is a terminal, texts are made harmless for it (see TerminalText.h).

/// Writes "xmldom: " and the text to standard error: what went wrong.
void Complain(const std::string& text);

/// The same about a file: "xmldom: FILE: TEXT".
void ComplainAbout(const std::string& file, const std::string& text);

/// Writes what went wrong at a place in a file as compilers do: "FILE:LINE:COLUMN: REASON", and
/// below it the line of `text` with a caret under the column. `text` is the whole text of the file.
void ComplainAt(const std::string& file, const std::string& text, SourcePosition position,
                const std::string& reason);

/// The same with an excerpt that has been made already (see SourceExcerpt).
void ComplainAt(const std::string& file, SourcePosition position, const std::string& reason,
                const std::string& excerpt);

/// Writes "FILE: TEXT" to standard error: what --verbose tells of a file with which all is well.
void Remark(const std::string& file, const std::string& text);

/// A text from outside, such as an argument, as a part of a message: where standard error is a
/// terminal, it stays within its line.
std::string ForMessage(const std::string& text);

/// From now on writes the log events of the library like messages of the tool, line by line.
void SayLogEvents();

/// Says that memory is out, without using any. May be called in a handler of a signal.
void ComplainOfMemory() noexcept;

}  // namespace tool

#endif
