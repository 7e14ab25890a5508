#ifndef XMLDOM_BASE_FILEREPLACEMENT_H
#define XMLDOM_BASE_FILEREPLACEMENT_H

#include <xmldom/base/Export.h>
#include <xmldom/base/TextArgument.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

// The parts of replacing a file as a whole: the new contents are written to another file beside it,
// which is then renamed. So every reader finds either the old contents or the new ones, in full, at
// any time and after a crash.

namespace xmldom {

/// The error of the last system call.
inline std::error_code SystemError() noexcept {
  return std::error_code(errno, std::generic_category());
}

/// The file that a path names, or that it will name.
struct NamedFile {
  std::string path;    ///< Without symbolic links in the last part.
  bool exists;         ///< Whether there is such a file.
  struct stat status;  ///< Its status; only when it exists.

  /// The folder that it stands in, as the beginning of a path: empty, or with a '/' at its end.
  std::string Folder() const { return path.substr(0, path.rfind('/') + 1); }
};

/// Finds the file that `path` names. Where that is a symbolic link, it is the file to which it
/// leads. Out: `file`.
/// Result: an error when the path leads to something else than a regular file, when that may not be
/// written to, and when a symbolic link leads nowhere. A path that names nothing yet is no error.
XMLDOM_NODISCARD inline std::error_code FindFile(const std::string& path, NamedFile& file) {
  const std::unique_ptr<char, void (*)(void*)> found(realpath(path.c_str(), nullptr), &std::free);
  file.exists = found != nullptr;
  if (!file.exists) {
    const std::error_code error = SystemError();
    struct stat link;
    const bool isNew = errno == ENOENT && !path.empty() && lstat(path.c_str(), &link) != 0;
    file.path = path;
    return isNew ? std::error_code() : error;
  }
  file.path = found.get();
  if (stat(file.path.c_str(), &file.status) != 0) return SystemError();
  if (S_ISDIR(file.status.st_mode)) return std::make_error_code(std::errc::is_a_directory);
  if (!S_ISREG(file.status.st_mode)) return std::make_error_code(std::errc::invalid_argument);
  // rename() needs only the right to write to the folder, so a file that is read-only has to be
  // found here.
  if (faccessat(AT_FDCWD, file.path.c_str(), W_OK, AT_EACCESS) != 0) return SystemError();
  return std::error_code();
}

/// The extended attribute that holds the POSIX access control list of a file.
inline const char* AccessControlList() noexcept { return "system.posix_acl_access"; }

/// Reads an extended attribute. Out: its value. Result: whether there is one that can be read;
/// otherwise errno tells why not.
inline bool ReadAttribute(const std::string& path, const char* name, std::vector<char>& value) {
  const ssize_t room = getxattr(path.c_str(), name, nullptr, 0);
  if (room < 0) return false;
  // Room for no bytes would ask for the size once more.
  value.resize(static_cast<std::size_t>(room) + 1);
  const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
  if (size < 0) return false;
  value.resize(static_cast<std::size_t>(size));
  return true;
}

/// Gives the open file `descriptor` the POSIX access control list of the file at `path`. When that
/// file has none, removes the list that a new file gets from its folder.
/// Result: an error, which has to stop the replacement: the mode of a file with a list shows as the
/// rights of the group what the list grants at most, so that the mode alone would grant more.
XMLDOM_NODISCARD inline std::error_code CopyAccessControlList(const std::string& path,
                                                              int descriptor) {
  const char* const name = AccessControlList();
  std::vector<char> list;
  int result = -1;
  if (ReadAttribute(path, name, list)) {
    result = fsetxattr(descriptor, name, list.data(), list.size(), 0);
    return result == 0 ? std::error_code() : SystemError();
  }
  const auto isNone = [] { return errno == ENODATA || errno == ENOTSUP || errno == ENOSYS; };
  if (isNone()) result = fremovexattr(descriptor, name);
  return result == 0 || isNone() ? std::error_code() : SystemError();
}

/// Gives the open file `descriptor` the extended attributes of the file at `path`, the POSIX access
/// control list aside. One that cannot be read or set is left out.
inline void CopyExtendedAttributes(const std::string& path, int descriptor) {
  const ssize_t size = listxattr(path.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::vector<char> names(static_cast<std::size_t>(size) + 1);
  const ssize_t listed = listxattr(path.c_str(), names.data(), names.size() - 1);
  std::vector<char> value;
  for (const char* name = names.data(); name < names.data() + listed;
       name += std::strlen(name) + 1) {
    if (std::strcmp(name, AccessControlList()) == 0) continue;
    if (ReadAttribute(path, name, value)) {
      fsetxattr(descriptor, name, value.data(), value.size(), 0);
    }
  }
}

/// Gives the open file `descriptor` the extended attributes, the owner, the POSIX access control
/// list and the mode of an existing file. An owner, a group or an attribute that the system refuses
/// to set is left out, so that the new file gets fewer rights than the old one, never more: when
/// the group cannot be set, the new group gets only the rights that all users have.
/// Result: an error when the access control list or the mode could not be set.
XMLDOM_NODISCARD inline std::error_code CopyAttributes(const NamedFile& file, int descriptor) {
  mode_t mode = file.status.st_mode & 07777;
  CopyExtendedAttributes(file.path, descriptor);
  if (fchown(descriptor, file.status.st_uid, file.status.st_gid) != 0) {
    // A program must not run with the rights of another owner than before.
    mode &= 0777;
    if (fchown(descriptor, static_cast<uid_t>(-1), file.status.st_gid) != 0) {
      const mode_t everybody = mode & 07;
      mode = (mode & ~static_cast<mode_t>(070)) | (mode & everybody << 3);
    }
  }
  // The list grants rights, so it waits for the group. The mode is set last, because a change of
  // owner clears the set-user-ID and set-group-ID bits.
  const std::error_code error = CopyAccessControlList(file.path, descriptor);
  if (error) return error;
  return fchmod(descriptor, mode) == 0 ? std::error_code() : SystemError();
}

/// Waits until the renamed entries of a folder are on the disk; an empty path is the current
/// folder. Result: an error when they are perhaps not. A folder that may be written to but not read
/// cannot be opened, and so not be waited for.
XMLDOM_NODISCARD inline std::error_code SyncFolder(const std::string& path) {
  const int folder = open(path.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return errno == EACCES ? std::error_code() : SystemError();
  const bool isSynced = fsync(folder) == 0 || errno == EINVAL;
  const std::error_code error = isSynced ? std::error_code() : SystemError();
  close(folder);
  return error;
}

/// A new file in the folder of another one. The successor of a file that exists has no name until
/// TakePlace gives it one, where the file system can do so (O_TMPFILE): then a process that is
/// killed before leaves nothing behind. Otherwise it has a name that begins with ".xmldom-" from
/// the start, and is removed again unless TakePlace renames it. Every member that fails returns the
/// error of the system.
class FileSuccessor {
 public:
  FileSuccessor() : m_descriptor(-1) {}
  /// Closes and removes the file.
  ~FileSuccessor() {
    if (m_descriptor >= 0) close(m_descriptor);
    if (!m_path.empty()) unlink(m_path.c_str());
  }

  FileSuccessor(const FileSuccessor&) = delete;
  FileSuccessor& operator=(const FileSuccessor&) = delete;

  /// Makes the file, once. Where `file` exists, nobody else may read the new one until it has the
  /// attributes of `file`; otherwise it has the rights that the process gives to new files.
  XMLDOM_NODISCARD std::error_code Create(const NamedFile& file) {
    m_folder = file.Folder();
    const mode_t mode = file.exists ? 0600 : 0666;
    // Some systems give a file without a name rights that the process withholds from new files.
    if (file.exists) m_descriptor = OpenUnnamed(mode);
    if (m_descriptor >= 0) return std::error_code();
    return FindName([this, mode](const char* path) {
      m_descriptor = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      return m_descriptor >= 0;
    });
  }

  /// The open file.
  int Descriptor() const noexcept { return m_descriptor; }

  /// Writes all of a text.
  XMLDOM_NODISCARD std::error_code Write(TextArgument text) {
    const char* at = text.Data();
    for (std::size_t left = text.Size(); left > 0;) {
      const ssize_t written = write(m_descriptor, at, left);
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) return SystemError();
      at += written;
      left -= static_cast<std::size_t>(written);
    }
    return std::error_code();
  }

  /// Waits until all is on the disk, and closes a file that has a name: some file systems report
  /// only then that bytes were not stored. A file without a name exists only as long as it is open.
  XMLDOM_NODISCARD std::error_code Finish() {
    if (fsync(m_descriptor) != 0) return SystemError();
    if (m_path.empty()) return std::error_code();
    const int descriptor = m_descriptor;
    m_descriptor = -1;
    return close(descriptor) == 0 ? std::error_code() : SystemError();
  }

  /// Renames the file to `path`, in place of a file of that name. No system call puts a file
  /// without a name into the place of another one, so it gets a name beginning with ".xmldom-"
  /// first. A process that is killed between these two calls leaves the new file under that name.
  XMLDOM_NODISCARD std::error_code TakePlace(const std::string& path) {
    if (m_path.empty()) {
      const std::string self = SelfPath();
      const std::error_code error = FindName([&self](const char* name) {
        return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
      });
      if (error) return error;
    }
    if (std::rename(m_path.c_str(), path.c_str()) != 0) return SystemError();
    m_path.clear();
    return std::error_code();
  }

 private:
  /// The path at which a process finds the file that it has open, whether that has a name or not.
  std::string SelfPath() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

  /// Result: the descriptor of a new file without a name; -1 where that is not possible, or where
  /// such a file could not get a name later.
  int OpenUnnamed(mode_t mode) const {
#ifdef O_TMPFILE
    if (access("/proc/self/fd", X_OK) != 0) return -1;
    const char* const folder = m_folder.empty() ? "." : m_folder.c_str();
    return open(folder, O_TMPFILE | O_WRONLY | O_CLOEXEC, mode);
#else
    static_cast<void>(mode);
    return -1;
#endif
  }

  /// Calls `take` with paths in the folder until it has taken one that was free. Result: an error
  /// when none could be taken, for the reason that `take` has left in errno.
  template <class Take>
  std::error_code FindName(const Take& take) {
    const unsigned int start = static_cast<unsigned int>(getpid()) * 64;
    for (unsigned int i = 0; i < 4096; ++i) {
      char name[32];
      std::snprintf(name, sizeof name, ".xmldom-%06x", (start + i) & 0xFFFFFF);
      std::string path = m_folder + name;
      if (take(path.c_str())) {
        m_path.swap(path);
        return std::error_code();
      }
      if (errno != EEXIST) break;
    }
    return SystemError();
  }

  std::string m_folder;
  std::string m_path;  // empty when there is no name to remove
  int m_descriptor;
};

/// Replaces a file, or makes it. The attributes of a file that exists are kept (see
/// CopyAttributes); its other names, hard links, keep the old contents. Result: an error; the old
/// file is then as it was, and nothing else is left, except where the last step fails: to wait
/// until the renaming is on the disk. Bad input: see FindFile. Cost: linear in the text, and the
/// time that the disk takes.
XMLDOM_NODISCARD inline std::error_code ReplaceFile(const std::string& path, TextArgument text) {
  NamedFile file;
  std::error_code error = FindFile(path, file);
  if (error) return error;
  // Nothing may need memory once the file has taken its place.
  const std::string folder = file.Folder();
  FileSuccessor successor;
  error = successor.Create(file);
  if (!error) error = successor.Write(text);
  if (!error && file.exists) error = CopyAttributes(file, successor.Descriptor());
  if (!error) error = successor.Finish();
  if (!error) error = successor.TakePlace(file.path);
  return error ? error : SyncFolder(folder);
}

}  // namespace xmldom

#endif
