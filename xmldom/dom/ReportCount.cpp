// The count of log events and debug lines that searches compare. Tested by
// tests/query/SingleNodeSearch_test.cpp.

#include <xmldom/dom/ReportCount.h>

unsigned long xmldom::ReportCount::s_count = 0;
