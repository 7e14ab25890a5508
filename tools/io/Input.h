#ifndef XMLDOM_TOOLS_IO_INPUT_H
#define XMLDOM_TOOLS_IO_INPUT_H

#include <cstddef>
#include <string>

namespace tool {

/// A file, or standard input, read whole.
struct Input {
  std::string name;  ///< As messages and results show it.
  std::string text;
};

/// How messages and results call what the operand `file` names; "-" is standard input.
std::string DisplayName(const std::string& file);

/// Reads what the operand `file` names to its end into `text`.
/// Result: whether it could be read; otherwise `reason` tells why not.
/// Bad input: a directory, or more bytes than the parser can take, cannot be read.
bool ReadWhole(const std::string& file, std::string& text, std::string& reason);

/// Reads what the operand `file` names. Result: whether it could be read; otherwise the reason has
/// been said.
bool ReadInput(const std::string& file, Input& input);

/// Says what is wrong at the byte at `offset` of an input, and shows the place.
void ComplainAt(const Input& input, std::size_t offset, const std::string& reason);

}  // namespace tool

#endif
