#ifndef XMLDOM_TESTS_TOOL_PARSEREVENTS_H
#define XMLDOM_TESTS_TOOL_PARSEREVENTS_H

#include <string>
#include <vector>

/// All that a parser tells of a text, in its order, an event a line: elements with their
/// attributes, texts, comments, processing instructions, CDATA sections, references that are not
/// expanded, and the declarations before the root element. Left out is white space alone outside
/// the root element, and between tags of an element that holds elements and does not preserve it.
/// Result: "not well-formed" as the last event of a text that is not.
std::vector<std::string> ParserEvents(const std::string& text);

#endif
