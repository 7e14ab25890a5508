#ifndef XMLDOM_DOM_REPORTCOUNT_H
#define XMLDOM_DOM_REPORTCOUNT_H

namespace xmldom {

/// How many log events and debug lines the matching of steps and the reading of text have caused so
/// far. A search compares two readings: when they are equal, a part of it that has failed can be
/// left out the next time, because nobody could tell the difference.
class ReportCount {
 public:
  static unsigned long Now() { return s_count; }
  static void Add() { ++s_count; }

 private:
  static unsigned long s_count;
};

}  // namespace xmldom

#endif
