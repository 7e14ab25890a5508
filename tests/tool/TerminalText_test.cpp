#include <tools/io/TerminalText.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <termios.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Output.h>
#include <tools/io/ResultWriter.h>
#include <unistd.h>

#include <functional>
#include <string>

// What a terminal gets to read: nothing that it would obey, in results as in messages.

namespace {

using tool::ForTerminal;
using tool::ForTerminalLine;

TEST(TerminalText, What_a_terminal_shows_stays) {
  const std::string text = "<a b='1'>\n\t\xc3\xa9 \xe6\xbc\xa2 \xf0\x9f\x98\x80</a>\r\n";
  EXPECT_EQ(text, ForTerminal(text));
  // A joiner is a part of words and of pictographs.
  EXPECT_EQ("a\xe2\x80\x8d", ForTerminal("a\xe2\x80\x8d"));
}

TEST(TerminalText, Control_characters_are_escaped) {
  EXPECT_EQ("\\x00", ForTerminal(std::string(1, '\0')));
  EXPECT_EQ("\\x1B]0;title\\x07", ForTerminal("\033]0;title\007"));
  EXPECT_EQ("\\x7F\\xC2\\x80\\xC2\\x9B\\xC2\\x9F", ForTerminal("\x7f\xc2\x80\xc2\x9b\xc2\x9f"));
  EXPECT_EQ("\xc2\xa0", ForTerminal("\xc2\xa0"));
  EXPECT_EQ("a\\x0Db", ForTerminal("a\rb"));
}

TEST(TerminalText, What_changes_the_direction_is_escaped) {
  EXPECT_EQ("\\xD8\\x9C", ForTerminal("\xd8\x9c"));
  EXPECT_EQ("\\xE2\\x80\\x8E\\xE2\\x80\\x8F", ForTerminal("\xe2\x80\x8e\xe2\x80\x8f"));
  EXPECT_EQ("\\xE2\\x80\\xAA\\xE2\\x80\\xAE", ForTerminal("\xe2\x80\xaa\xe2\x80\xae"));
  EXPECT_EQ("\\xE2\\x81\\xA6\\xE2\\x81\\xA9", ForTerminal("\xe2\x81\xa6\xe2\x81\xa9"));
}

TEST(TerminalText, Bytes_that_are_no_UTF_8_are_escaped) {
  EXPECT_EQ("\\x9B\\xE9\\xC3", ForTerminal("\x9b\xe9\xc3"));
}

TEST(TerminalText, A_line_has_no_line_ends) {
  EXPECT_EQ("a\\x0Ab\\x09\\x0D\\x0A", ForTerminalLine("a\nb\t\r\n"));
}

/// A terminal that this process writes to and reads back.
class Terminal {
 public:
  Terminal() : m_reader(posix_openpt(O_RDWR | O_NOCTTY)), m_writer(-1) {
    if (m_reader < 0 || grantpt(m_reader) != 0 || unlockpt(m_reader) != 0) return;
    m_writer = open(ptsname(m_reader), O_RDWR | O_NOCTTY);
    // What is written is to be read back as it is.
    struct termios settings;
    if (m_writer < 0 || tcgetattr(m_writer, &settings) != 0) return;
    settings.c_oflag &= ~static_cast<tcflag_t>(OPOST);
    tcsetattr(m_writer, TCSANOW, &settings);
  }
  ~Terminal() {
    close(m_writer);
    close(m_reader);
  }

  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  bool IsOpen() const { return m_writer >= 0; }
  int Writer() const { return m_writer; }

  std::string Read() const {
    char text[4096];
    const ssize_t count = read(m_reader, text, sizeof text);
    return std::string(text, count > 0 ? static_cast<std::size_t>(count) : 0);
  }

 private:
  int m_reader;
  int m_writer;
};

const char kName[] = "a\n\033[1m.xml";
const char kShownName[] = "a\\x0A\\x1B[1m.xml";

TEST(TerminalText, Results_are_escaped_for_a_terminal_alone) {
  const Terminal terminal;
  if (!terminal.IsOpen()) GTEST_SKIP() << "no pseudo-terminal can be made here";
  tool::Output output(dup(terminal.Writer()));
  tool::ResultWriter results(output, std::string(kName) + ":");
  results.Write("\033[2J\tx");
  results.EndLine();
  output.Flush();
  EXPECT_EQ(std::string(kShownName) + ":\\x1B[2J\tx\n", terminal.Read());

  int ends[2];
  ASSERT_EQ(0, pipe(ends));
  {
    tool::Output piped(ends[1]);
    tool::ResultWriter(piped, "").Write("\033[2J\tx\n");
    piped.Flush();
  }
  char text[16];
  EXPECT_EQ(7, read(ends[0], text, sizeof text));
  EXPECT_EQ("\033[2J\tx\n", std::string(text, 7));
  close(ends[0]);
}

TEST(TerminalText, A_result_ends_with_the_byte_that_was_asked_for) {
  const Terminal terminal;
  if (!terminal.IsOpen()) GTEST_SKIP() << "no pseudo-terminal can be made here";
  tool::Output output(dup(terminal.Writer()));
  tool::ResultWriter results(output, "");
  results.SetTerminator('\0');
  results.Write("x");
  results.EndLine();
  results.WriteHarmless("\033[1mname\033[0m");
  output.Flush();
  EXPECT_EQ(std::string("x\0\033[1mname\033[0m", 14), terminal.Read());
}

/// What a terminal gets to read that is standard error while `say` runs.
std::string Said(const Terminal& terminal, const std::function<void()>& say) {
  std::fflush(stderr);
  const int before = dup(STDERR_FILENO);
  dup2(terminal.Writer(), STDERR_FILENO);
  say();
  std::fflush(stderr);
  dup2(before, STDERR_FILENO);
  close(before);
  return terminal.Read();
}

TEST(TerminalText, Messages_are_escaped_for_a_terminal_alone) {
  const Terminal terminal;
  if (!terminal.IsOpen()) GTEST_SKIP() << "no pseudo-terminal can be made here";
  const std::string shown = kShownName;
  EXPECT_EQ("xmldom: \\xC2\\x9B\n", Said(terminal, [] { tool::Complain("\xc2\x9b"); }));
  EXPECT_EQ("xmldom: " + shown + ": x\n", Said(terminal, [] { tool::ComplainAbout(kName, "x"); }));
  EXPECT_EQ(shown + ": x\n", Said(terminal, [] { tool::Remark(kName, "x"); }));
  EXPECT_EQ(shown + ":1:2: \\xE2\\x80\\xAE\n  <a>\n   ^\n", Said(terminal, [] {
              tool::ComplainAt(kName, "<a>", {1, 2}, "\xe2\x80\xae");
            }));
  testing::internal::CaptureStderr();
  tool::ComplainAbout(kName, "\033");
  EXPECT_EQ("xmldom: a\n\033[1m.xml: \033\n", testing::internal::GetCapturedStderr());
}

}  // namespace
