#ifndef XMLDOM_TOOLS_IO_FILEREPLACEMENT_H
#define XMLDOM_TOOLS_IO_FILEREPLACEMENT_H

#include <string>

namespace tool {

/// Replaces the contents of a file so that whoever looks at it, at any time and after any crash,
/// finds the old file or the new one, whole: the new one is written beside it, under a name that
/// begins with ".xmldom-", and then renamed over it.
///
/// Mode, owner and extended attributes, such as access control lists, are kept as far as the system
/// lets us; a symbolic link stays, and the file that it leads to is replaced. Hard links, which are
/// other names of the old file, keep the old contents.
/// `from` is what was read from the file, and `to` what it shall hold. `suffix`, when it is not
/// empty, makes the name under which the old contents are kept, beside the file that is replaced.
/// Result: whether that was done and is on the disk; otherwise `reason` tells why not, and the file
/// is as it was, unless it is the disk that fails in the end.
/// Bad input: what is no regular file, may not be written to, or does not hold `from` any more is
/// left alone.
bool ReplaceFile(const std::string& file, const std::string& from, const std::string& to,
                 const std::string& suffix, std::string& reason);

}  // namespace tool

#endif
