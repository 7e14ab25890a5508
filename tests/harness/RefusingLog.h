#ifndef XMLDOM_TESTS_HARNESS_REFUSINGLOG_H
#define XMLDOM_TESTS_HARNESS_REFUSINGLOG_H

#include <xmldom/support/LogException.h>
#include <xmldom/support/Logger.h>

#include <string>

/// While it lives, every log event throws a CLogException* whose message is the title.
class RefusingLog {
 public:
  RefusingLog() { CLogger::SetSink(Refuse, nullptr); }
  ~RefusingLog() { CLogger::SetSink(nullptr, nullptr); }

  RefusingLog(const RefusingLog&) = delete;
  RefusingLog& operator=(const RefusingLog&) = delete;

 private:
  static void Refuse(const CLogEvent& event, void*) {
    throw Exception("RefusingLog", event.title, nullptr);
  }
};

/// The message of the CLogException* that leaves `call`; empty when none does.
template <class Call>
std::string ThrownMessage(Call call) {
  try {
    call();
  } catch (CLogException* exception) {
    const std::string message = exception->GetMessage();
    delete exception;
    return message;
  }
  return "";
}

#endif
