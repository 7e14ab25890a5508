#ifndef XMLDOM_TOOLS_IO_FILEREPLACEMENT_H
#define XMLDOM_TOOLS_IO_FILEREPLACEMENT_H

#include <string>

namespace tool {

/// Replaces the contents of a file. Every reader finds either the old contents or the new ones, in
/// full, at any time and after a crash: the new contents are written to another file beside it,
/// whose name begins with ".xmldom-", and that file is renamed.
///
/// `from` is what was read from the file, and `to` the new contents. Unless `suffix` is empty, the
/// old contents are kept in a file beside it, whose name is that of the file with the suffix.
/// Mode, owner and extended attributes, such as access control lists, are kept as far as the system
/// allows. Where `file` is a symbolic link, the file that it leads to is replaced. Hard links,
/// which are other names of the old file, keep the old contents.
///
/// Result: whether the new contents are on the disk; otherwise `reason` tells why not. The file is
/// then as it was, except where the last step fails: to wait until the renaming is on the disk.
/// Bad input: a file that is not a regular one, that may not be written to, or that does not hold
/// `from` any more is left alone.
bool ReplaceFile(const std::string& file, const std::string& from, const std::string& to,
                 const std::string& suffix, std::string& reason);

}  // namespace tool

#endif
