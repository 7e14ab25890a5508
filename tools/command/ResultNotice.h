#ifndef XMLDOM_TOOLS_COMMAND_RESULTNOTICE_H
#define XMLDOM_TOOLS_COMMAND_RESULTNOTICE_H

#include <tools/document/ResultCheck.h>

#include <string>

class IXMLDOMDocument2;

namespace tool {

struct Input;

/// Whether what was written of an element may go out: whether it loads again, and then gives the
/// same elements.
/// `xml`, which is NUL-terminated, was written of `element`, which is in the tree that was loaded
/// from `input`. What cannot go wrong is not parsed.
/// Effects: otherwise tells on standard error what is wrong, and where that stands in the input.
/// Cost: linear in both; when something is wrong, that of a SourceMap too.
bool IsSound(const char* xml, const IXMLDOMNode& element, ResultKind kind, const Input& input,
             IXMLDOMDocument2& document);

/// Tells on standard error of a problem with what was written of an input, and where in the input
/// that stands. `document` is the tree of the input. Result: whether there is none.
bool SayNoProblem(const ResultProblem& problem, const Input& input, IXMLDOMDocument2& document);

/// Tells on standard error why a node is in the way, and where it stands in the input. `document`
/// is the tree of the input, which holds the node. Cost: that of a SourceMap.
void ComplainAtNode(const IXMLDOMNode& node, const std::string& reason, const Input& input,
                    IXMLDOMDocument2& document);

}  // namespace tool

#endif
