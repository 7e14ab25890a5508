#ifndef XMLDOM_TESTS_HARNESS_NODEFACTS_H
#define XMLDOM_TESTS_HARNESS_NODEFACTS_H

#include <string>

class IXMLDOMDocument2;
class IXMLDOMNode;

// What an outline does not show of small trees.

/// The reference counts of a node and of all below: a1(v2)[#Text1 b1] is an element a with one
/// reference, an attribute v with two, and so on. A document shows its own count too.
std::string References(const IXMLDOMNode* node);

/// The names of those nodes, from `node` downwards, that have another owner document than `owner`;
/// empty when there are none. Attributes have no part in it.
std::string NotOwnedBy(const IXMLDOMDocument2* owner, const IXMLDOMNode* node);

/// The same for the attributes of `node` and of all below.
std::string AttributesNotOwnedBy(const IXMLDOMDocument2* owner, const IXMLDOMNode* node);

/// What is wrong with the tree of a document of which nobody holds a node: links that do not fit
/// each other, counts of references or of live nodes that differ from what can be seen. Empty when
/// nothing is. `nodesBefore` is how many nodes were alive before the document was made.
std::string Faults(const IXMLDOMDocument2* document, int nodesBefore);

#endif
