// Replaces a file as a whole: writes the new contents to a file beside it and renames that file.
// Whatever can fail does so before the rename, which the system does completely or not at all.
// Tested by tests/tool/edit_in_place_test.bash and tests/tool/replacement_test.bash.

#include <tools/io/FileReplacement.h>

#include <tools/io/FileAttributes.h>
#include <tools/io/Input.h>
#include <tools/io/Output.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace tool {

namespace {

/// A file cannot be replaced; the text says why.
class ReplacementError : public std::runtime_error {
 public:
  explicit ReplacementError(const std::string& text) : std::runtime_error(text) {}
};

/// Throws with the reason of the last system call behind `what`.
[[noreturn]] void Fail(const std::string& what) {
  throw ReplacementError(what + std::strerror(errno));
}

/// While it exists, the signals with which users end a program wait, so that none of them leaves a
/// half-written file beside the original.
class SignalBlock {
 public:
  SignalBlock() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) sigaddset(&ending, number);
    sigprocmask(SIG_BLOCK, &ending, &m_before);
  }
  ~SignalBlock() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;

 private:
  sigset_t m_before;
};

/// The file that an operand of the command line names.
struct Original {
  std::string path;  // absolute, without symbolic links
  struct stat status;
};

Original FindOriginal(const std::string& file) {
  Original original;
  const std::unique_ptr<char, decltype(&std::free)> path(realpath(file.c_str(), nullptr),
                                                         &std::free);
  if (path == nullptr) Fail("");
  original.path = path.get();
  if (stat(original.path.c_str(), &original.status) != 0) Fail("");
  if (!S_ISREG(original.status.st_mode)) throw ReplacementError("not a regular file");
  // rename() needs only the right to write to the folder, so a file that is read-only has to be
  // found here.
  if (faccessat(AT_FDCWD, original.path.c_str(), W_OK, AT_EACCESS) != 0) Fail("");
  return original;
}

/// Throws when the file does not hold `text` any more.
void RequireContents(const Original& original, const std::string& text) {
  std::string now;
  std::string reason;
  if (ReadWhole(original.path, now, reason) && now == text) return;
  throw ReplacementError("changed by somebody else in the meantime");
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

/// A new file in the folder of the original. It is removed again unless TakePlace renames it.
class Successor {
 public:
  explicit Successor(const Original& original)
      : m_original(original),
        m_path(FolderOf(original.path) + ".xmldom-XXXXXX"),
        m_descriptor(mkostemp(&m_path[0], O_CLOEXEC)) {
    if (m_descriptor < 0) Fail("no file can be made beside it: ");
  }
  ~Successor() {
    if (!m_path.empty()) unlink(m_path.c_str());
  }

  Successor(const Successor&) = delete;
  Successor& operator=(const Successor&) = delete;

  /// Writes the text, gives the file the attributes of the original and waits until all is on the
  /// disk. `keepsTimes`: the times of access and change are those of the original too.
  void Fill(const std::string& text, bool keepsTimes) {
    Output output(m_descriptor);
    output.Write(text);
    output.Flush();
    const struct timespec times[] = {m_original.status.st_atim, m_original.status.st_mtim};
    if (keepsTimes && futimens(m_descriptor, times) != 0) Fail("");
    if (!CopyAttributes(m_original.path, m_original.status, m_descriptor)) Fail("");
    output.Sync();
    output.Finish();
  }

  /// Renames the file to `path`, in place of a file of that name.
  void TakePlace(const std::string& path) {
    if (rename(m_path.c_str(), path.c_str()) != 0) Fail("'" + path + "' cannot be replaced: ");
    m_path.clear();
  }

 private:
  const Original& m_original;
  std::string m_path;
  int m_descriptor;
};

/// Waits until the renamed entries of the folder are on the disk.
void SyncFolder(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // A folder that may be written to but not read cannot be opened, and so not be synced.
  if (folder < 0) return;
  const bool synced = fsync(folder) == 0 || errno == EINVAL;
  close(folder);
  if (!synced) Fail("replaced, but perhaps not on the disk yet: ");
}

void Replace(const std::string& file, const std::string& from, const std::string& to,
             const std::string& suffix) {
  const Original original = FindOriginal(file);
  if (from == to && suffix.empty()) return;
  const SignalBlock block;
  Successor next(original);
  next.Fill(to, false);
  std::unique_ptr<Successor> kept;
  if (!suffix.empty()) {
    kept = std::make_unique<Successor>(original);
    kept->Fill(from, true);
  }
  RequireContents(original, from);
  if (kept != nullptr) kept->TakePlace(original.path + suffix);
  next.TakePlace(original.path);
  SyncFolder(FolderOf(original.path));
}

}  // namespace

bool ReplaceFile(const std::string& file, const std::string& from, const std::string& to,
                 const std::string& suffix, std::string& reason) {
  try {
    Replace(file, from, to, suffix);
    return true;
  } catch (const ReplacementError& error) {
    reason = error.what();
  } catch (const OutputError& error) {
    reason = error.what();
  }
  return false;
}

}  // namespace tool
