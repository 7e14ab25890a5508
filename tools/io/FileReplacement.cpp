// Replaces a file as a whole: writes the new contents to a file beside it and renames that file.
// Whatever can fail does so before the rename, which the system does completely or not at all. The
// steps are those of the library's own replacing; this adds the old file that is kept, the look
// whether somebody else has changed the file, and the signals.
// Tested by tests/tool/edit_in_place_test.bash and tests/tool/replacement_test.bash.

#include <tools/io/FileReplacement.h>

#include <tools/io/Input.h>

#include <xmldom/base/FileReplacement.h>

#include <signal.h>
#include <sys/stat.h>

#include <stdexcept>
#include <system_error>

namespace tool {

namespace {

/// A file cannot be replaced; the text says why.
class ReplacementError : public std::runtime_error {
 public:
  explicit ReplacementError(const std::string& text) : std::runtime_error(text) {}
};

/// Throws with the reason of an error behind `what`; does nothing when there is none.
void Require(const std::error_code& error, const std::string& what) {
  if (error) throw ReplacementError(what + error.message());
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

xmldom::NamedFile FindOriginal(const std::string& path) {
  xmldom::NamedFile original;
  const std::error_code error = xmldom::FindFile(path, original);
  if (error == std::errc::is_a_directory || error == std::errc::invalid_argument) {
    throw ReplacementError("not a regular file");
  }
  Require(error, "");
  if (!original.exists) Require(std::make_error_code(std::errc::no_such_file_or_directory), "");
  return original;
}

/// Throws when the file does not hold `text` any more.
void RequireContents(const xmldom::NamedFile& original, const std::string& text) {
  std::string now;
  std::string reason;
  if (ReadWhole(original.path, now, reason) && now == text) return;
  throw ReplacementError("changed by somebody else in the meantime");
}

/// Makes a file in the folder of the original, with its attributes, that holds `text`, and waits
/// until all is on the disk. `keepsTimes`: the times of access and change are those of the original
/// too.
void Fill(xmldom::FileSuccessor& successor, const xmldom::NamedFile& original,
          const std::string& text, bool keepsTimes) {
  Require(successor.Create(original), "no file can be made beside it: ");
  Require(successor.Write(text), "write error: ");
  const struct timespec times[] = {original.status.st_atim, original.status.st_mtim};
  if (keepsTimes && futimens(successor.Descriptor(), times) != 0) {
    Require(xmldom::SystemError(), "");
  }
  Require(xmldom::CopyAttributes(original, successor.Descriptor()), "");
  Require(successor.Finish(), "write error: ");
}

void TakePlace(xmldom::FileSuccessor& successor, const std::string& path) {
  Require(successor.TakePlace(path), "'" + path + "' cannot be replaced: ");
}

void Replace(const std::string& file, const std::string& from, const std::string& to,
             const std::string& suffix) {
  const xmldom::NamedFile original = FindOriginal(file);
  if (from == to && suffix.empty()) return;
  const SignalBlock block;
  xmldom::FileSuccessor next;
  Fill(next, original, to, false);
  xmldom::FileSuccessor kept;
  if (!suffix.empty()) Fill(kept, original, from, true);
  RequireContents(original, from);
  if (!suffix.empty()) TakePlace(kept, original.path + suffix);
  TakePlace(next, original.path);
  Require(xmldom::SyncFolder(original.Folder()), "replaced, but perhaps not on the disk yet: ");
}

}  // namespace

bool ReplaceFile(const std::string& file, const std::string& from, const std::string& to,
                 const std::string& suffix, std::string& reason) {
  try {
    Replace(file, from, to, suffix);
    return true;
  } catch (const ReplacementError& error) {
    reason = error.what();
  }
  return false;
}

}  // namespace tool
