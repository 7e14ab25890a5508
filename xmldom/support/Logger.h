#ifndef XMLDOM_SUPPORT_LOGGER_H
#define XMLDOM_SUPPORT_LOGGER_H

#include <xmldom/base/Export.h>
#include <xmldom/support/bstr.h>

class IXMLDOMNode;

/// What a log event is about.
enum LogTypeEnum : int {
  LOG_TYPE_DATA =
      11,             ///< What callers and documents hand in: arguments, entities, page attributes.
  LOG_TYPE_DOM = 18,  ///< Nodes, paths and loads.
  LOG_TYPE_EXCEPTION = 25,  ///< A caught exception.
  LOG_TYPE_LEAKS = 26       ///< The leak report.
};

/// How bad it is; a higher number is less urgent.
enum LogSeverityEnum : int {
  LOG_SEVERITY_ALERT = 1,    ///< An exception passes through.
  LOG_SEVERITY_ERROR = 3,    ///< Something could not be done.
  LOG_SEVERITY_WARNING = 4,  ///< It was done, but not wholly as asked.
  LOG_SEVERITY_DEBUG = 7,    ///< An answer to a diagnostic call.
  LOG_SEVERITY_TRACE = 10    ///< A detail of what is done.
};

/// One event, valid while the sink runs.
struct CLogEvent {
  int type;           ///< A LogTypeEnum.
  int severity;       ///< A LogSeverityEnum.
  const char* title;  ///< What happened; never null.
  const char* body;   ///< The text that goes with it, or null.
};

/// Receives events. An exception that leaves a sink passes through the call that posted the event.
///
/// That call is not over while the sink runs. The sink may load, build and release other documents,
/// read and query any tree, release its own references and set another sink. It must not change or
/// release the tree that the call works on, load into its document, or touch what the call was
/// given, except to append to the buffer that XML is written into. Only the events of a load come
/// when it has ended: there the sink may also load into the document, or release it. Events of what
/// the sink calls come to it again: it has to end that itself.
typedef void (*LogSink)(const CLogEvent& event, void* context);

/// Gives the XML of a node as a new BSTR.
typedef BSTR (*NodeRenderer)(IXMLDOMNode* node);

/// Where the library says what went wrong. Events go to the sink, or to standard error when none
/// is set. A null title counts as empty.
/// Threads: there is one sink for all, which runs in the thread that posts; no locks.
class XMLDOM_API CLogger {
 public:
  /// Sends all further events to `sink`; null restores standard error. `context` is handed on.
  static void SetSink(LogSink sink, void* context);

  /// Sets how PostLogEvent turns a node into text; the library that owns the node class does so
  /// when it is loaded. Null: such events get no body.
  static void SetNodeRenderer(NodeRenderer renderer);

  /// Posts an event; `body` may be null.
  static void PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           const char* body);

  /// Posts an event whose body is the XML of `node`; null gives no body.
  static void PostLogEvent(LogTypeEnum type, LogSeverityEnum severity, const char* title,
                           IXMLDOMNode* node);

  /// Posts an event without body whose title is formatted as by printf.
  static void PostLogEventF(LogTypeEnum type, LogSeverityEnum severity, const char* format, ...)
      XMLDOM_PRINTF(3, 4);

  /// Posts an event with the given body, its title formatted from `format` and the arguments
  /// behind `body`.
  static void PostLogEventFB(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                             const char* body, ...) XMLDOM_PRINTF(3, 5);

  /// Posts an event whose body is the caller's call stack, one frame a line.
  static void PostBacktrace(LogTypeEnum type, LogSeverityEnum severity, const char* title);
};

#endif
