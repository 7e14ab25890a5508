// Writes messages to standard error, one write for each, so that those of several processes do not
// mix within a line. Log events of the library come out the same way, through the logger's sink.
// Tested by tests/tool/command_line_test.bash and tests/tool/input_test.bash.

#include <tools/io/Diagnostics.h>

#include <tools/io/SourceExcerpt.h>
#include <tools/io/TerminalText.h>

#include <xmldom/support/Logger.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

const char kTool[] = "xmldom: ";

bool HasTerminal() { return isatty(STDERR_FILENO) == 1; }

void Say(const std::string& text) {
  const std::string said = HasTerminal() ? ForTerminal(text) : text;
  // A failure is ignored: there is nowhere else to report it.
  std::fwrite(said.data(), 1, said.size(), stderr);
}

/// Writes each line of a text as a message of the tool.
void SayLines(const std::string& text) {
  std::size_t begin = 0;
  std::string lines;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines += kTool + text.substr(begin, end - begin) + "\n";
    begin = end + 1;
  }
  Say(lines);
}

void SayLogEvent(const CLogEvent& event, void*) {
  SayLines(event.title);
  if (event.body != nullptr) SayLines(event.body);
}

}  // namespace

std::string ForMessage(const std::string& text) {
  return HasTerminal() ? ForTerminalLine(text) : text;
}

void Complain(const std::string& text) { Say(kTool + text + "\n"); }

void ComplainOfMemory() noexcept {
  static const char text[] = "xmldom: out of memory\n";
  if (write(STDERR_FILENO, text, sizeof text - 1) < 0) return;
}

void ComplainAbout(const std::string& file, const std::string& text) {
  Complain(ForMessage(file) + ": " + text);
}

void ComplainAt(const std::string& file, const std::string& text, SourcePosition position,
                const std::string& reason) {
  ComplainAt(file, position, reason, SourceExcerpt(text, position));
}

void ComplainAt(const std::string& file, SourcePosition position, const std::string& reason,
                const std::string& excerpt) {
  Say(ForMessage(file) + ":" + std::to_string(position.line) + ":" +
      std::to_string(position.column) + ": " + reason + "\n" + excerpt);
}

void Remark(const std::string& file, const std::string& text) {
  Say(ForMessage(file) + ": " + text + "\n");
}

void SayLogEvents() { CLogger::SetSink(SayLogEvent, nullptr); }

}  // namespace tool
