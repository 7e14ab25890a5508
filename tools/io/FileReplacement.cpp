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

/// Why a file cannot be replaced.
class ReplacementError : public std::runtime_error {
 public:
  explicit ReplacementError(const std::string& text) : std::runtime_error(text) {}
};

[[noreturn]] void Fail(const std::string& what) {
  throw ReplacementError(what + std::strerror(errno));
}

/// Holds back the signals with which people end a program, so that none of them leaves half a file
/// behind.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) sigaddset(&ending, number);
    sigprocmask(SIG_BLOCK, &ending, &m_before);
  }
  ~SignalsHeld() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
  sigset_t m_before;
};

/// The file that an operand leads to.
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
  // Renaming asks only for the right to write to the folder.
  if (faccessat(AT_FDCWD, original.path.c_str(), W_OK, AT_EACCESS) != 0) Fail("");
  return original;
}

void RequireContents(const Original& original, const std::string& text) {
  std::string now;
  std::string reason;
  if (ReadWhole(original.path, now, reason) && now == text) return;
  throw ReplacementError("changed by somebody else in the meantime");
}

std::string FolderOf(const std::string& path) { return path.substr(0, path.rfind('/') + 1); }

/// A new file beside the original, until it takes a place there.
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

  /// Writes the text down to the disk. `keepsTimes`: the file stands for the original.
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

  void TakePlace(const std::string& path) {
    if (rename(m_path.c_str(), path.c_str()) != 0) Fail("'" + path + "' cannot be replaced: ");
    m_path.clear();
  }

 private:
  const Original& m_original;
  std::string m_path;
  int m_descriptor;
};

void SyncFolder(const std::string& path) {
  const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  // Who may write to a folder need not be allowed to read it.
  if (folder < 0) return;
  const bool synced = fsync(folder) == 0 || errno == EINVAL;
  close(folder);
  if (!synced) Fail("replaced, but perhaps not on the disk yet: ");
}

void Replace(const std::string& file, const std::string& from, const std::string& to,
             const std::string& suffix) {
  const Original original = FindOriginal(file);
  if (from == to && suffix.empty()) return;
  const SignalsHeld held;
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
