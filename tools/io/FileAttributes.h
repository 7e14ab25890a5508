#ifndef XMLDOM_TOOLS_IO_FILEATTRIBUTES_H
#define XMLDOM_TOOLS_IO_FILEATTRIBUTES_H

#include <sys/stat.h>

#include <string>

namespace tool {

/// Gives the open file `descriptor` the extended attributes, the owner and the mode of the file at
/// `path`, whose status is `status`. What the system refuses to set is left out. When the group
/// cannot be set, the new group gets only the rights that all users have.
/// Result: whether the mode could be set; otherwise errno tells why not.
bool CopyAttributes(const std::string& path, const struct stat& status, int descriptor);

}  // namespace tool

#endif
