// The count of log events and debug lines that searches compare. Tested by
// tests/query/SingleNodeSearch_test.cpp.

#include <xmldom/dom/ReportCount.h>

#include <xmldom/base/Export.h>

namespace xmldom {

__thread unsigned long ReportCount::s_count = 0;

XMLDOM_COLD XMLDOM_NOINLINE void ReportCount::Add() { ++s_count; }

}  // namespace xmldom
