#include "harness/LogCapture.h"

LoggedEvent Event(int type, int severity, const std::string& title) {
  return LoggedEvent{type, severity, title, "", false};
}

LoggedEvent Event(int type, int severity, const std::string& title, const std::string& body) {
  return LoggedEvent{type, severity, title, body, true};
}

bool operator==(const LoggedEvent& a, const LoggedEvent& b) {
  return a.type == b.type && a.severity == b.severity && a.title == b.title && a.body == b.body &&
         a.hasBody == b.hasBody;
}

std::ostream& operator<<(std::ostream& out, const LoggedEvent& event) {
  out << "(" << event.type << ", " << event.severity << ", \"" << event.title << "\"";
  if (event.hasBody) out << ", \"" << event.body << "\"";
  return out << ")";
}

LogCapture::LogCapture() { CLogger::SetSink(Collect, this); }

LogCapture::~LogCapture() { CLogger::SetSink(nullptr, nullptr); }

void LogCapture::Collect(const CLogEvent& event, void* context) {
  static_cast<LogCapture*>(context)->m_events.push_back(
      LoggedEvent{event.type, event.severity, event.title, event.body ? event.body : "",
                  event.body != nullptr});
}
