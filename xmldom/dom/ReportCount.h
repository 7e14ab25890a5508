#ifndef XMLDOM_DOM_REPORTCOUNT_H
#define XMLDOM_DOM_REPORTCOUNT_H

#include <xmldom/base/Export.h>

namespace xmldom {

/// How many log events and debug lines the matching of steps and the reading of text have caused so
/// far in this thread. A search compares two readings: when they are equal, a part of it that has
/// failed can be left out the next time, because nobody could tell the difference.
class ReportCount {
 public:
  /// The count of the running thread, which alone may use this object. Where
  /// XMLDOM_THREAD_PLACE does nothing, finding it is a call of a function, and so not done at every
  /// reading.
  ReportCount() : m_count(&s_count) {}

  unsigned long Now() const { return *m_count; }
  static void Add();

 private:
  static XMLDOM_THREAD_PLACE __thread unsigned long s_count;

  const unsigned long* m_count;
};

}  // namespace xmldom

#endif
