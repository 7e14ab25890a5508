#ifndef XMLDOM_DOM_LOGKINDS_H
#define XMLDOM_DOM_LOGKINDS_H

#include <xmldom/support/Logger.h>

namespace xmldom {

// The types and severities of the log events that this library posts. They are spelled as numbers,
// because a platform's own support layer may give them other names than Logger.h, or none.

const LogTypeEnum kLogData = static_cast<LogTypeEnum>(11);
const LogTypeEnum kLogDom = static_cast<LogTypeEnum>(18);
const LogTypeEnum kLogLeaks = static_cast<LogTypeEnum>(26);

const LogSeverityEnum kSeverityError = static_cast<LogSeverityEnum>(3);
const LogSeverityEnum kSeverityWarning = static_cast<LogSeverityEnum>(4);
const LogSeverityEnum kSeverityDebug = static_cast<LogSeverityEnum>(7);
const LogSeverityEnum kSeverityTrace = static_cast<LogSeverityEnum>(10);

// CLogException::LogMessage takes plain numbers.
const int kExceptionLogType = 25;
const int kExceptionLogSeverity = 1;

}  // namespace xmldom

#endif
