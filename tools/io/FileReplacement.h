#ifndef XMLDOM_TOOLS_IO_FILEREPLACEMENT_H
#define XMLDOM_TOOLS_IO_FILEREPLACEMENT_H

#include <string>

namespace tool {

class FileLock;

/// How a file gets its new contents.
struct ReplacementWay {
  /// Unless it is empty, the old contents are kept in a file beside it, whose name is that of the
  /// file with this suffix.
  std::string suffix;
  /// Whether the file itself is written to, instead of being replaced by a new one.
  bool writesInto;
};

/// Replaces the contents of a file that has been locked before it was read. `from` is what was read
/// from it, and `to` the new contents.
///
/// By a new file: every reader finds either the old contents or the new ones, in full, at any time
/// and after a crash. The new contents are written to another file in the same folder, which is
/// then renamed (see xmldom::FileSuccessor). Mode, owner and extended attributes, such as access
/// control lists, are kept as far as the system allows. A file with several names (hard links) is
/// refused, because the others would keep the old contents.
///
/// By writing into it: the file stays the same for the system, with all its names, its owner and
/// its mode. A reader can meet a part of the new contents, and a crash can leave such a part. When
/// the system refuses to write, the old contents are put back.
///
/// Signals that would end the process wait until all is done.
/// Result: whether the new contents are on the disk; otherwise `reason` tells why not. The file is
/// then as it was, except where `reason` says otherwise, or where the last step fails: to wait
/// until a renaming is on the disk. Bad input: a file that does not hold `from` any more, or whose
/// path names another file, is left alone.
bool ReplaceFile(const FileLock& file, const std::string& from, const std::string& to,
                 const ReplacementWay& way, std::string& reason);

}  // namespace tool

#endif
