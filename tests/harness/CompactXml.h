#ifndef XMLDOM_TESTS_HARNESS_COMPACTXML_H
#define XMLDOM_TESTS_HARNESS_COMPACTXML_H

#include <string>

class IXMLDOMNode;

/// A small tree as XML on one line, without white space of its own and without any translation:
/// values stand as they are stored, attributes and children in the order of their chains.
/// Two things that a parser could not tell apart, or not see, are said by an instruction: <?value
/// v?> is a value of the element itself, and <?text?> stands before a text that follows another or
/// has no value. An attribute without value looks like one whose value is empty. Result: a document
/// shows its children alone.
std::string CompactXml(const IXMLDOMNode* node);

#endif
