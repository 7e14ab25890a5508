// Copies owner, mode and extended attributes from a file to the one that is going to replace it.
// Where something cannot be copied, the new file gets fewer rights than the old one, never more.
// Tested by tests/tool/edit_in_place_test.bash.

#include <tools/io/FileAttributes.h>

#include <sys/xattr.h>
#include <unistd.h>

#include <cstring>
#include <vector>

namespace tool {

namespace {

/// Access control lists and security labels are extended attributes. One that cannot be read or set
/// is left out.
void CopyExtendedAttributes(const std::string& path, int descriptor) {
  const ssize_t size = listxattr(path.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::vector<char> names(static_cast<std::size_t>(size) + 1);
  const ssize_t listed = listxattr(path.c_str(), names.data(), names.size() - 1);
  std::vector<char> value;
  for (const char* name = names.data(); name < names.data() + listed;
       name += std::strlen(name) + 1) {
    const ssize_t room = getxattr(path.c_str(), name, nullptr, 0);
    if (room < 0) continue;
    value.resize(static_cast<std::size_t>(room));
    const ssize_t length = getxattr(path.c_str(), name, value.data(), value.size());
    if (length < 0) continue;
    fsetxattr(descriptor, name, value.data(), static_cast<std::size_t>(length), 0);
  }
}

}  // namespace

bool CopyAttributes(const std::string& path, const struct stat& status, int descriptor) {
  mode_t mode = status.st_mode & 07777;
  CopyExtendedAttributes(path, descriptor);
  if (fchown(descriptor, status.st_uid, status.st_gid) != 0) {
    // A program must not run with the rights of another owner than before.
    mode &= 0777;
    if (fchown(descriptor, static_cast<uid_t>(-1), status.st_gid) != 0) {
      const mode_t everybody = mode & 07;
      mode = (mode & ~static_cast<mode_t>(070)) | (mode & everybody << 3);
    }
  }
  // The mode is set last, because a change of owner clears the set-user-ID and set-group-ID bits.
  return fchmod(descriptor, mode) == 0;
}

}  // namespace tool
