#ifndef XMLDOM_TESTS_HARNESS_OUTLINE_H
#define XMLDOM_TESTS_HARNESS_OUTLINE_H

#include <string>

class IXMLDOMNode;

/// One line that shows a small tree as it is stored: a(v='1')[#Text'x' b] is an element a with an
/// attribute, a text and an element b. Children and attributes stand in the order of their chains,
/// values as stored, a missing value is left out. A document shows its children alone.
std::string Outline(const IXMLDOMNode* node);

#endif
