#include <tools/io/Diagnostics.h>

#include <tools/io/SourceExcerpt.h>

#include <xmldom/support/Logger.h>

#include <algorithm>
#include <cstdio>

namespace tool {

namespace {

const char kTool[] = "xmldom: ";

// Nobody is left to be told when this fails.
void Say(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stderr); }

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

void Complain(const std::string& text) { Say(kTool + text + "\n"); }

void ComplainAbout(const std::string& file, const std::string& text) {
  Complain(file + ": " + text);
}

void ComplainAt(const std::string& file, const std::string& text, SourcePosition position,
                const std::string& reason) {
  Say(file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column) + ": " +
      reason + "\n" + SourceExcerpt(text, position));
}

void Remark(const std::string& file, const std::string& text) { Say(file + ": " + text + "\n"); }

void SayLogEvents() { CLogger::SetSink(SayLogEvent, nullptr); }

}  // namespace tool
