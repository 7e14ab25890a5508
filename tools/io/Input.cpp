// Reads a file or standard input whole into a string.
// The size of a regular file is known beforehand; for anything else the string doubles as it fills.
// Tested by tests/tool/input_test.bash.

#include <tools/io/Input.h>

#include <tools/io/Diagnostics.h>
#include <tools/io/FileLock.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <vector>

namespace tool {

namespace {

// The length that is given to Expat is an int.
const std::size_t kLargest = INT_MAX;
const std::size_t kFirstRoom = 65536;

/// Owns the descriptor of a file that it opens, or borrows that of standard input.
class Source {
 public:
  explicit Source(const std::string& file)
      : m_isStandardInput(file == "-"),
        m_descriptor(m_isStandardInput ? STDIN_FILENO
                                       : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)) {}
  ~Source() {
    if (!m_isStandardInput && m_descriptor >= 0) close(m_descriptor);
  }

  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;

  int Descriptor() const { return m_descriptor; }

 private:
  bool m_isStandardInput;
  int m_descriptor;
};

std::string TooLarge() {
  return "more than " + std::to_string(kLargest) + " bytes, which is too large to parse";
}

/// The size of a regular file, which can be more than memory has addresses; 0 when it cannot be
/// known beforehand.
unsigned long long ExpectedSize(int descriptor) {
  struct stat status;
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) return 0;
  return static_cast<unsigned long long>(status.st_size);
}

bool ReadDescriptor(int descriptor, std::string& text, std::string& reason) {
  const unsigned long long expected = ExpectedSize(descriptor);
  if (expected > kLargest) {
    reason = TooLarge();
    return false;
  }
  // One byte more than expected, so that the read that finds the end does not make the text grow.
  text.resize(std::max(static_cast<std::size_t>(expected) + 1, kFirstRoom));
  std::size_t length = 0;
  for (;;) {
    if (length == text.size()) text.resize(2 * length);
    const ssize_t count = read(descriptor, &text[length], text.size() - length);
    if (count < 0) {
      if (errno == EINTR) continue;
      reason = std::strerror(errno);
      return false;
    }
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
    if (length > kLargest) {
      reason = TooLarge();
      return false;
    }
  }
  text.resize(length);
  return true;
}

}  // namespace

std::string DisplayName(const std::string& file) { return file == "-" ? "(standard input)" : file; }

bool ReadWhole(const std::string& file, std::string& text, std::string& reason) {
  text.clear();
  const Source source(file);
  if (source.Descriptor() >= 0) return ReadDescriptor(source.Descriptor(), text, reason);
  reason = std::strerror(errno);
  return false;
}

bool ReadPieces(const std::string& file, const std::function<bool(const char*, std::size_t)>& take,
                std::string& reason) {
  const Source source(file);
  std::vector<char> piece(kFirstRoom);
  for (;;) {
    const ssize_t count =
        source.Descriptor() < 0 ? -1 : read(source.Descriptor(), piece.data(), piece.size());
    if (count == 0) return true;
    if (count > 0) {
      if (!take(piece.data(), static_cast<std::size_t>(count))) return true;
    } else if (errno != EINTR) {
      reason = std::strerror(errno);
      return false;
    }
  }
}

bool ReadInputToReplace(const std::string& file, Input& input) {
  input.name = DisplayName(file);
  const auto lock = std::make_shared<FileLock>();
  std::string reason;
  if (lock->Lock(file, reason) && ReadDescriptor(lock->Descriptor(), input.text, reason)) {
    input.lock = lock;
    return true;
  }
  ComplainAbout(input.name, reason);
  return false;
}

bool ReadInput(const std::string& file, Input& input) {
  input.name = DisplayName(file);
  std::string reason;
  if (ReadWhole(file, input.text, reason)) return true;
  ComplainAbout(input.name, reason);
  return false;
}

void ComplainAt(const Input& input, std::size_t offset, const std::string& reason) {
  ComplainAt(input.name, input.text, PositionOf(input.text, offset), reason);
}

}  // namespace tool
