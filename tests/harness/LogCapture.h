#ifndef XMLDOM_TESTS_HARNESS_LOGCAPTURE_H
#define XMLDOM_TESTS_HARNESS_LOGCAPTURE_H

#include <xmldom/support/Logger.h>

#include <ostream>
#include <string>
#include <vector>

/// A copy of one log event.
struct LoggedEvent {
  int type;
  int severity;
  std::string title;
  std::string body;  // empty when there was none
  bool hasBody;
};

/// An event without body, to compare with.
LoggedEvent Event(int type, int severity, const std::string& title);
/// An event with a body, to compare with.
LoggedEvent Event(int type, int severity, const std::string& title, const std::string& body);

bool operator==(const LoggedEvent& a, const LoggedEvent& b);
std::ostream& operator<<(std::ostream& out, const LoggedEvent& event);

/// Collects all log events while it lives.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();

  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  const std::vector<LoggedEvent>& Events() const { return m_events; }
  void Clear() { m_events.clear(); }

 private:
  static void Collect(const CLogEvent& event, void* context);

  std::vector<LoggedEvent> m_events;
};

#endif
