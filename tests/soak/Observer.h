#ifndef XMLDOM_TESTS_SOAK_OBSERVER_H
#define XMLDOM_TESTS_SOAK_OBSERVER_H

#include <xmldom/support/Logger.h>
#include <xmldom/support/MemFile.h>

#include <cstdio>
#include <functional>
#include <string>

/// Writes down what a call does that a caller can notice. While it lives, standard output and log
/// events go to it.
class Observer {
 public:
  Observer();
  ~Observer();

  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;

  /// Runs `call`, which appends its results to its argument. Result: those lines, then what was
  /// thrown, logged and printed, the library's error code, and each count of live objects that has
  /// changed.
  std::string Observe(const std::function<void(std::string& results)>& call);

  /// Lets log events come here again, after another sink was set.
  void Resume() { CLogger::SetSink(Collect, this); }

  /// Lets the sink throw at the event of that number, counted from 1, of each call that is
  /// observed. 0: at none.
  void ThrowAtEvent(int number) { m_throwAt = number; }

  /// What a log sink sees beside each event: `look` is asked when one comes in. Null: nothing.
  void LookAtEvents(const std::function<std::string()>& look) { m_look = look; }

 private:
  static void Collect(const CLogEvent& event, void* context);
  std::string TakePrinted();

  std::string m_events;
  std::function<std::string()> m_look;
  int m_throwAt = 0;
  int m_eventCount = 0;
  std::FILE* m_file;
  int m_stdout;
};

/// Appends what a buffer holds, and its counters, to the results of a call when it goes out of
/// scope, also by an exception.
class BufferResult {
 public:
  BufferResult(CMemFile& buffer, std::string& results) : m_buffer(buffer), m_results(results) {}
  ~BufferResult();

  BufferResult(const BufferResult&) = delete;
  BufferResult& operator=(const BufferResult&) = delete;

 private:
  CMemFile& m_buffer;
  std::string& m_results;
};

/// Switches the debug lines of the library and of the plain functions. The event of that goes
/// nowhere.
void SwitchDebugLines(bool on, Observer& observer);

/// The first line in which two observations differ, with some lines before it and both wholes;
/// empty when they are equal.
std::string Difference(const std::string& library, const std::string& plain);

#endif
