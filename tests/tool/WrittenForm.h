#ifndef XMLDOM_TESTS_TOOL_WRITTENFORM_H
#define XMLDOM_TESTS_TOOL_WRITTENFORM_H

#include <string>

/// What `format -i` makes of a text; empty for a text that the library does not load.
std::string WrittenForm(const std::string& text);

#endif
