// Replaces the contents of a locked file: by a new file, which is renamed, or by writing into it.
// With a new file, whatever can fail does so before the rename, which the system does completely or
// not at all. The steps are those of the library's own replacing; this adds the old file that is
// kept, the look whether somebody without a lock has changed the file, and the signals.
// Tested by tests/tool/FileReplacement_test.cpp, tests/tool/edit_in_place_test.bash and
// tests/tool/replacement_test.bash.

#include <tools/io/FileReplacement.h>

#include <tools/io/FileLock.h>

#include <xmldom/base/FileReplacement.h>

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace tool {

namespace {

const char kWriteInstead[] = "; --in-place=write writes into the file itself";

/// A file cannot be replaced; the text says why.
class ReplacementError : public std::runtime_error {
 public:
  explicit ReplacementError(const std::string& text) : std::runtime_error(text) {}
};

/// Throws with the reason of an error behind `what`, and `advice` at the end; does nothing when
/// there is none.
void Require(const std::error_code& error, const std::string& what, const char* advice = "") {
  if (error) throw ReplacementError(what + error.message() + advice);
}

/// While it exists, the signals that end a program wait, so that none of them leaves a half-written
/// file. Those that stop it for a while do not.
class SignalBlock {
 public:
  SignalBlock() {
    sigset_t ending;
    sigfillset(&ending);
    for (const int number : {SIGTSTP, SIGTTIN, SIGTTOU, SIGCONT}) sigdelset(&ending, number);
    sigprocmask(SIG_BLOCK, &ending, &m_before);
  }
  ~SignalBlock() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;

 private:
  sigset_t m_before;
};

/// Whether a regular file holds this text and nothing else.
bool Holds(int descriptor, const std::string& text) {
  char piece[16384];
  for (std::size_t at = 0;;) {
    const ssize_t count = pread(descriptor, piece, sizeof piece, static_cast<off_t>(at));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0 && at == text.size();
    const std::size_t size = static_cast<std::size_t>(count);
    if (size > text.size() - at || std::memcmp(piece, &text[at], size) != 0) return false;
    at += size;
  }
}

/// Throws when somebody who does not lock files has put another file in the place of this one, or
/// when it does not hold `text` any more. The path is not opened again: by then it could be that of
/// a pipe, and the signals that would end the wait for its writer are held back.
void RequireUnchanged(const FileLock& file, const std::string& text) {
  if (file.IsCurrent() && Holds(file.Descriptor(), text)) return;
  throw ReplacementError("changed by somebody else in the meantime");
}

// ---- By a new file

void RequireOneName(const FileLock& file) {
  struct stat status;
  if (fstat(file.Descriptor(), &status) == 0 && status.st_nlink > 1) {
    throw ReplacementError("it has " + std::to_string(status.st_nlink) +
                           " names (hard links), of which the others would keep the old contents" +
                           kWriteInstead);
  }
}

/// Makes a file in the folder of the original, with its attributes, that holds `text`, and waits
/// until all is on the disk. `keepsTimes`: the times of access and change are those of the original
/// too.
void Fill(xmldom::FileSuccessor& successor, const xmldom::NamedFile& original,
          const std::string& text, bool keepsTimes, const char* advice) {
  Require(successor.Create(original), "no file can be made beside it: ", advice);
  Require(successor.Write(text), "write error: ");
  const struct timespec times[] = {original.status.st_atim, original.status.st_mtim};
  if (keepsTimes && futimens(successor.Descriptor(), times) != 0) {
    Require(xmldom::SystemError(), "");
  }
  Require(xmldom::CopyAttributes(original, successor.Descriptor()),
          "its access control list or its mode cannot be kept: ", advice);
  Require(successor.Finish(), "write error: ");
}

/// Puts a new file in the place of the file that is locked, or of the one beside it whose name has
/// this suffix.
void TakePlace(xmldom::FileSuccessor& successor, const FileLock& file, const std::string& suffix,
               const char* advice) {
  Require(successor.TakePlace(file.File().path + suffix),
          "'" + file.Name() + suffix + "' cannot be replaced: ", advice);
}

void SyncFolder(const xmldom::NamedFile& file) {
  Require(xmldom::SyncFolder(file.Folder()), "replaced, but perhaps not on the disk yet: ");
}

// ---- By writing into the file

/// Writes the bytes of `text` from `begin` to `end` where they belong in a file.
std::error_code WriteAt(int descriptor, const std::string& text, std::size_t begin,
                        std::size_t end) {
  while (begin < end) {
    const ssize_t written =
        pwrite(descriptor, &text[begin], end - begin, static_cast<off_t>(begin));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return xmldom::SystemError();
    begin += static_cast<std::size_t>(written);
  }
  return std::error_code();
}

std::error_code Cut(int descriptor, std::size_t size) {
  const bool isCut = ftruncate(descriptor, static_cast<off_t>(size)) == 0;
  return isCut ? std::error_code() : xmldom::SystemError();
}

/// Makes `text` the contents of a file, of whose bytes those from `end` on already are.
std::error_code Overwrite(int descriptor, const std::string& text, std::size_t end) {
  std::error_code error = WriteAt(descriptor, text, 0, end);
  if (!error) error = Cut(descriptor, text.size());
  if (!error && fsync(descriptor) != 0) error = xmldom::SystemError();
  return error;
}

void WriteInto(int descriptor, const std::string& from, const std::string& to) {
  // What goes beyond the old end is written first: when there is no room for it, no byte of the old
  // contents has been touched yet.
  const std::size_t common = std::min(from.size(), to.size());
  std::error_code error = WriteAt(descriptor, to, common, to.size());
  if (!error) error = Overwrite(descriptor, to, common);
  if (!error) return;
  const bool isBack = !Overwrite(descriptor, from, from.size());
  Require(error, "write error: ", isBack ? "" : "; the file holds a part of the new contents now");
}

void Replace(const FileLock& file, const std::string& from, const std::string& to,
             const ReplacementWay& way) {
  if (from == to && way.suffix.empty()) return;
  if (!way.writesInto) RequireOneName(file);
  const xmldom::NamedFile& original = file.File();
  const SignalBlock block;
  xmldom::FileSuccessor next;
  if (!way.writesInto) Fill(next, original, to, false, kWriteInstead);
  xmldom::FileSuccessor kept;
  if (!way.suffix.empty()) Fill(kept, original, from, true, "");
  RequireUnchanged(file, from);
  if (!way.suffix.empty()) TakePlace(kept, file, way.suffix, "");
  if (way.writesInto) {
    WriteInto(file.Descriptor(), from, to);
  } else {
    TakePlace(next, file, "", kWriteInstead);
  }
  if (!way.writesInto || !way.suffix.empty()) SyncFolder(original);
}

}  // namespace

bool ReplaceFile(const FileLock& file, const std::string& from, const std::string& to,
                 const ReplacementWay& way, std::string& reason) {
  try {
    Replace(file, from, to, way);
    return true;
  } catch (const ReplacementError& error) {
    reason = error.what();
  }
  return false;
}

}  // namespace tool
