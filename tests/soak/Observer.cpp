#include "soak/Observer.h"

#include <unistd.h>
#include <xmldom/support/LogException.h>
#include <xmldom/xmldom.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

#include "harness/Balance.h"
#include "harness/Trees.h"
#include "plain/PlainText.h"

namespace {

/// No call of the library sets it.
const int kUntouchedErrorCode = 77;

}  // namespace

Observer::Observer() {
  CLogger::SetSink(Collect, this);
  std::fflush(stdout);
  m_file = std::tmpfile();
  if (m_file == nullptr) std::abort();
  m_stdout = dup(STDOUT_FILENO);
  dup2(fileno(m_file), STDOUT_FILENO);
}

Observer::~Observer() {
  std::fflush(stdout);
  dup2(m_stdout, STDOUT_FILENO);
  close(m_stdout);
  std::fclose(m_file);
  CLogger::SetSink(nullptr, nullptr);
}

std::string Observer::Observe(const std::function<void(std::string& results)>& call) {
  std::string seen;
  TakePrinted();
  m_events.clear();
  m_eventCount = 0;
  CXML::SetXMLError(kUntouchedErrorCode);
  const Balance before = Balance::Now();
  try {
    call(seen);
  } catch (CLogException* thrown) {
    seen += "threw " + Text(thrown->GetWhere()) + ": " + Text(thrown->GetMessage()) + ": " +
            Text(thrown->GetDetail()) + "\n";
    delete thrown;
  } catch (const std::exception& thrown) {
    seen += std::string("threw ") + thrown.what() + "\n";
  }
  m_look = nullptr;
  const std::string changes = Balance::Now().ChangesSince(before);
  seen += m_events;
  const std::string printed = TakePrinted();
  if (!printed.empty()) seen += "printed " + printed;
  const int errorCode = CXML::GetXMLError();
  if (errorCode != kUntouchedErrorCode) seen += "error code " + std::to_string(errorCode) + "\n";
  CXML::ClearXMLError();
  return changes.empty() ? seen : seen + "live objects: " + changes;
}

void Observer::Collect(const CLogEvent& event, void* context) {
  Observer& observer = *static_cast<Observer*>(context);
  observer.m_events += "event " + std::to_string(event.type) + ", " +
                       std::to_string(event.severity) + " " + event.title + "\n";
  if (event.body != nullptr) observer.m_events += "  body <" + std::string(event.body) + ">\n";
  if (observer.m_look) observer.m_events += "  seen " + observer.m_look() + "\n";
  if (++observer.m_eventCount == observer.m_throwAt) {
    throw Exception("the log", "does not take this event", nullptr);
  }
}

BufferResult::~BufferResult() {
  m_results += std::string("buffer <") + m_buffer.GetAsStr() + "> " +
               std::to_string(m_buffer.m_uPosition) + " of " + std::to_string(m_buffer.m_uLength) +
               "\n";
}

std::string Observer::TakePrinted() {
  std::fflush(stdout);
  const off_t size = lseek(STDOUT_FILENO, 0, SEEK_CUR);
  if (size <= 0) return "";
  std::string text(static_cast<std::size_t>(size), '\0');
  if (pread(STDOUT_FILENO, &text[0], text.size(), 0) != size) std::abort();
  lseek(STDOUT_FILENO, 0, SEEK_SET);
  return text;
}

void SwitchDebugLines(bool on, Observer& observer) {
  CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
  SetDebugEntities(on);
  plain::PrintsDebugLines() = on;
  observer.Resume();
}

std::string Difference(const std::string& library, const std::string& plain) {
  if (library == plain) return "";
  std::size_t same = 0;
  while (same < library.size() && same < plain.size() && library[same] == plain[same]) ++same;
  std::size_t line = library.rfind('\n', same == 0 ? 0 : same - 1);
  line = line == std::string::npos ? 0 : line + 1;
  const auto lineOf = [line](const std::string& text) {
    return text.substr(line, text.find('\n', line) - line);
  };
  return "first difference:\n  library: " + lineOf(library) + "\n  plain:   " + lineOf(plain) +
         "\n-- library:\n" + library + "\n-- plain:\n" + plain + "\n";
}
