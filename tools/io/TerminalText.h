#ifndef XMLDOM_TOOLS_IO_TERMINALTEXT_H
#define XMLDOM_TOOLS_IO_TERMINALTEXT_H

#include <string>

namespace tool {

// Characters that a terminal obeys instead of showing them: control characters, U+0080 to U+009F
// among them; marks, overrides and isolates that change the direction of a line (U+061C, U+200E,
// U+200F, U+202A to U+202E, U+2066 to U+2069); and bytes that are no valid UTF-8, which a terminal
// may take for either. A text from outside could use them to look like another one, or to change
// the settings of the terminal. Here each of their bytes is written as \xHH.

/// A text of several lines as a terminal may show it: line ends (LF and CR LF) and tabs stay.
/// Cost: linear in the text.
std::string ForTerminal(const std::string& text);

/// The same for a text within a line, such as the name of a file: line ends and tabs are written as
/// \xHH too.
std::string ForTerminalLine(const std::string& text);

}  // namespace tool

#endif
