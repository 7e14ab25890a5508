// The error code that failed lookups set: one number for each thread. The leak report, which
// needs all classes, is in diag/LeakReport.cpp. Tested by tests/dom/XMLError_test.cpp.

#include <xmldom/dom/XMLError.h>

XMLDOM_THREAD_PLACE __thread int CXML::iXMLError = CXML::NO_ERROR;

void CXML::SetXMLError(int code) { iXMLError = code; }

void CXML::ClearXMLError() { iXMLError = NO_ERROR; }

int CXML::GetXMLError() { return iXMLError; }
