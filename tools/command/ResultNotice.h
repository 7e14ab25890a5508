#ifndef XMLDOM_TOOLS_COMMAND_RESULTNOTICE_H
#define XMLDOM_TOOLS_COMMAND_RESULTNOTICE_H

#include <tools/document/ResultCheck.h>

#include <string>

class IXMLDOMDocument2;

namespace tool {

struct Input;

/// Tells on standard error of a problem with what was written of an input, and where in the input
/// that stands. `document` is the tree of the input. Result: whether there is a problem. Cost: when
/// there is, that of a SourceMap.
bool ComplainOfResult(const ResultProblem& problem, const Input& input, IXMLDOMDocument2& document);

/// Tells on standard error why a node is in the way, and where it stands in the input. `document`
/// is the tree of the input, which holds the node. Cost: that of a SourceMap.
void ComplainAtNode(const IXMLDOMNode& node, const std::string& reason, const Input& input,
                    IXMLDOMDocument2& document);

}  // namespace tool

#endif
