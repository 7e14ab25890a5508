#ifndef XMLDOM_TOOLS_IO_FILELOCK_H
#define XMLDOM_TOOLS_IO_FILELOCK_H

#include <xmldom/base/FileReplacement.h>

#include <string>
#include <system_error>

namespace tool {

/// An open file that no other process that locks files (flock) can lock, as long as this object
/// exists. Who replaces a file holds its lock from before it is read until the new file is in
/// place, so that of two changes none is lost: the second one reads what the first has written.
class FileLock {
 public:
  FileLock() : m_folder(-1), m_descriptor(-1) {}
  /// Ends the lock.
  ~FileLock();

  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  /// Opens the file that `path` names, for reading and writing, and waits until it is locked. Where
  /// that is a symbolic link, it is the file to which it leads. On a file system without locks, the
  /// file is only opened. Call it once.
  /// Result: whether that was possible; otherwise `reason` tells why not.
  /// Bad input: anything but a regular file that may be written to.
  /// Cost: waits as long as other processes hold the lock.
  bool Lock(const std::string& path, std::string& reason);

  int Descriptor() const { return m_descriptor; }

  /// The file, and its status when it was locked. Its path goes from the folder in which it was
  /// found, which is open, where the system knows such paths (/proc/self/fd): whatever is renamed
  /// meanwhile, what is made at this path, or beside it, is made in that folder.
  const xmldom::NamedFile& File() const { return m_file; }

  /// The path of the file for messages, without symbolic links.
  const std::string& Name() const { return m_name; }

  /// Whether the path still names the file that is locked, and the folder still holds it.
  bool IsCurrent() const;

 private:
  /// Opens the file and waits for its lock. Result: resource_unavailable_try_again when the path
  /// has come to name another file meanwhile.
  std::error_code TryLock(const std::string& path);
  /// Opens the folder of the file, and has the path of the file begin there.
  std::error_code EnterFolder();
  void Close();

  std::string m_name;
  xmldom::NamedFile m_file;
  int m_folder;  // -1 where there are no paths from an open folder
  int m_descriptor;
};

}  // namespace tool

#endif
