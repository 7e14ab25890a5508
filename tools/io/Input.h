#ifndef XMLDOM_TOOLS_IO_INPUT_H
#define XMLDOM_TOOLS_IO_INPUT_H

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace tool {

class FileLock;

/// The whole text of a file or of standard input.
struct Input {
  std::string name;  ///< As DisplayName gives it.
  std::string text;
  /// The bytes that were read, when the text is UTF-8 made of UTF-16; else empty.
  std::string utf16 = std::string();
  std::shared_ptr<const FileLock> lock = nullptr;  ///< Of a file that is going to be replaced.

  bool WasUtf16() const { return !utf16.empty(); }

  /// What the file holds.
  const std::string& Bytes() const { return WasUtf16() ? utf16 : text; }
};

/// The name of an input in messages and results. `file` is an operand of the command line: the path
/// of a file, or "-" for standard input.
std::string DisplayName(const std::string& file);

/// Reads the file that is called `file`, or standard input for "-", to its end.
/// Result: whether it could be read. Out: `text` then holds it; otherwise `reason` tells why not.
/// Bad input: a directory, or more bytes than the parser can take, cannot be read.
bool ReadWhole(const std::string& file, std::string& text, std::string& reason);

/// Reads it piece by piece instead, of any size, and calls `take` with each piece until the end has
/// been read or `take` returns false.
/// Result: false when it could not be read; `reason` then tells why not.
bool ReadPieces(const std::string& file,
                const std::function<bool(const char* piece, std::size_t size)>& take,
                std::string& reason);

/// Reads an input as ReadWhole does. Result: whether it could be read.
/// Effects: otherwise writes the reason to standard error.
bool ReadInput(const std::string& file, Input& input);

/// Locks a file and reads it, for a command that is going to replace it. Out: `input` holds the
/// lock too. Result: whether that was possible. Effects: otherwise writes the reason to standard
/// error.
bool ReadInputToReplace(const std::string& file, Input& input);

/// Writes to standard error what is wrong with the byte at `offset` of an input, and shows that
/// byte.
void ComplainAt(const Input& input, std::size_t offset, const std::string& reason);

}  // namespace tool

#endif
