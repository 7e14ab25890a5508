#ifndef XMLDOM_PARSE_LOADREPORT_H
#define XMLDOM_PARSE_LOADREPORT_H

namespace xmldom {

/// The room that the tag of a report takes at most, with its terminator.
const int kReportedTagSize = 512;

/// What get_parseError tells of a load. The reason is not here, because Expat has a text for each
/// code.
struct LoadReport {
  long errorCode;
  long filePos;
  long line;
  long linePos;
  const char* tag;  // whoever makes the report says where it is stored
};

}  // namespace xmldom

#endif
