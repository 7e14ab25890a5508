#ifndef XMLDOM_SUPPORT_LOGGER_H
#define XMLDOM_SUPPORT_LOGGER_H

#include <xmldom/base/Export.h>
#include <xmldom/support/bstr.h>

class IXMLDOMNode;

/// What a log event is about.
enum LogTypeEnum : int {
  LOG_TYPE_DATA = 11,  ///< Input: arguments of calls, entities and page attributes of documents.
  LOG_TYPE_DOM = 18,   ///< Nodes, paths and loads.
  LOG_TYPE_EXCEPTION = 25,  ///< An exception that was caught.
  LOG_TYPE_LEAKS = 26       ///< The leak report.
};

/// How severe a log event is; a higher number is less urgent.
enum LogSeverityEnum : int {
  LOG_SEVERITY_ALERT = 1,    ///< An exception leaves the call.
  LOG_SEVERITY_ERROR = 3,    ///< The call could not do what it was asked.
  LOG_SEVERITY_WARNING = 4,  ///< The call did only a part of what it was asked.
  LOG_SEVERITY_DEBUG = 7,    ///< The answer to a diagnostic call.
  LOG_SEVERITY_TRACE = 10    ///< A detail of what the call does.
};

/// One log event. It and its texts are valid only while the sink runs.
struct CLogEvent {
  int type;           ///< A LogTypeEnum.
  int severity;       ///< A LogSeverityEnum.
  const char* title;  ///< What happened; never null.
  const char* body;   ///< The text that goes with it, or null.
};

/// A function that receives log events. An exception that leaves a sink also leaves the call that
/// posted the event.
///
/// The sink runs in the middle of that call. It may load, build and release other documents, read
/// and query any tree, release its own references and set another sink. It must not change or
/// release the tree that the call works on, load into the document of that tree, or change the
/// arguments of the call; only appending to the buffer that XML is written into is allowed. The
/// events of a load are posted when it has ended: in them the sink may also load into the document
/// or release it. When the sink calls a function that posts an event, the sink is called again; it
/// must see to it that this ends. Threads: the sink runs in the thread that posts the event, and
/// several threads may call it at the same time.
typedef void (*LogSink)(const CLogEvent& event, void* context);

/// A function that returns the XML of a node as a new BSTR, which the log frees.
typedef BSTR (*NodeRenderer)(IXMLDOMNode* node);

/// The log of the library. Each event goes to the sink, or to standard error when none is set. A
/// null title counts as empty. Threads: all threads share one sink and may post at the same time.
class XMLDOM_API CLogger {
 public:
  /// Sends all further events to `sink`; null restores standard error. `context` is passed to each
  /// call of the sink. Threads: to be called while no other thread uses the library, because an
  /// event could find the new sink with the context of the old one.
  static void SetSink(LogSink sink, void* context);

  /// Sets the function with which PostLogEvent turns a node into text. The library that has the
  /// node class does so when it is loaded. With null, events about nodes have no body.
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

  /// Posts an event with the given body, its title formatted from `format` and the arguments behind
  /// `body`.
  static void PostLogEventFB(LogTypeEnum type, LogSeverityEnum severity, const char* format,
                             const char* body, ...) XMLDOM_PRINTF(3, 5);

  /// Posts an event whose body is the caller's call stack, one frame a line.
  static void PostBacktrace(LogTypeEnum type, LogSeverityEnum severity, const char* title);
};

#endif
