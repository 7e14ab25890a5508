#ifndef XMLDOM_DOM_REPORTS_H
#define XMLDOM_DOM_REPORTS_H

namespace xmldom {

/// How many log events and debug lines matching and text extraction have caused so far. A search
/// compares two readings to learn whether repeating a part of it could be heard.
class Notices {
 public:
  static unsigned long Count() { return s_count; }
  static void Add() { ++s_count; }

 private:
  static unsigned long s_count;
};

}  // namespace xmldom

#endif
