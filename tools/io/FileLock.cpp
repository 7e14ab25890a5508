// Opens and locks a file that is going to be replaced.
// Who waited for a lock may have got that of a file that has been replaced in the meantime. So the
// path is looked up again when the lock is there, until it names the locked file. The folder of the
// file stays open, and the file's path begins there: Linux has paths from an open folder in /proc,
// so that what takes a path, as xmldom::FileSuccessor does, works in that folder whatever is
// renamed. Tested by tests/tool/FileReplacement_test.cpp and tests/tool/replacement_test.bash.

#include <tools/io/FileLock.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace tool {

namespace {

// How often a path is looked up again. Each time, another process has replaced the file, so that as
// many processes would have to wait for it.
const int kMostRounds = 100000;

/// Waits for the lock of an open file. Result: an error when there can be none, although the file
/// system knows locks.
std::error_code WaitForLock(int descriptor) {
  while (flock(descriptor, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const bool isUnknown = errno == ENOLCK || errno == EOPNOTSUPP || errno == ENOSYS;
    return isUnknown || errno == EINVAL ? std::error_code() : xmldom::SystemError();
  }
  return std::error_code();
}

std::error_code Find(const std::string& path, xmldom::NamedFile& file) {
  const std::error_code error = xmldom::FindFile(path, file);
  if (error || file.exists) return error;
  return std::make_error_code(std::errc::no_such_file_or_directory);
}

}  // namespace

FileLock::~FileLock() { Close(); }

void FileLock::Close() {
  if (m_descriptor >= 0) close(m_descriptor);
  if (m_folder >= 0) close(m_folder);
  m_descriptor = m_folder = -1;
}

bool FileLock::Lock(const std::string& path, std::string& reason) {
  std::error_code error;
  for (int round = 0; round < kMostRounds; ++round) {
    error = TryLock(path);
    if (error != std::errc::resource_unavailable_try_again) break;
  }
  const bool isOther = error == std::errc::is_a_directory || error == std::errc::invalid_argument;
  if (error) reason = isOther ? "not a regular file" : error.message();
  return !error;
}

std::error_code FileLock::TryLock(const std::string& path) {
  Close();
  std::error_code error = Find(path, m_file);
  if (error) return error;
  m_name = m_file.path;
  error = EnterFolder();
  if (error) return error;
  // Should the path have become that of a pipe by now, opening it must not wait.
  m_descriptor = open(m_file.path.c_str(), O_RDWR | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (m_descriptor < 0) return xmldom::SystemError();
  error = WaitForLock(m_descriptor);
  if (error) return error;
  if (!IsCurrent()) return std::make_error_code(std::errc::resource_unavailable_try_again);
  return fstat(m_descriptor, &m_file.status) == 0 ? std::error_code() : xmldom::SystemError();
}

std::error_code FileLock::EnterFolder() {
#ifdef O_PATH
  if (access("/proc/self/fd", X_OK) != 0) return std::error_code();
  const std::string folder = m_file.Folder();
  // Unlike O_RDONLY, this needs no right to read the folder.
  m_folder = open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
  if (m_folder < 0) return xmldom::SystemError();
  m_file.path.replace(0, folder.size(), "/proc/self/fd/" + std::to_string(m_folder) + "/");
#endif
  return std::error_code();
}

bool FileLock::IsCurrent() const {
  struct stat locked;
  if (fstat(m_descriptor, &locked) != 0) return false;
  for (const std::string* path : {&m_name, &m_file.path}) {
    struct stat named;
    if (lstat(path->c_str(), &named) != 0 || locked.st_dev != named.st_dev ||
        locked.st_ino != named.st_ino) {
      return false;
    }
  }
  return true;
}

}  // namespace tool
