// Says why a result is not written. Tested by tests/tool/format_test.bash and
// tests/tool/format_in_place_test.bash.

#include <tools/command/ResultNotice.h>

#include <tools/document/SourceMap.h>
#include <tools/io/Input.h>

namespace tool {

namespace {

/// Where a node of a tree stands in the text that the tree was loaded from.
std::size_t PlaceOf(const IXMLDOMNode& node, const std::string& text, IXMLDOMDocument2& document) {
  try {
    return SourceMap(text, document).Find(&node)->begin;
  } catch (const SourceMapError& error) {
    return error.Offset();
  }
}

}  // namespace

bool ComplainOfResult(const ResultProblem& problem, const Input& input,
                      IXMLDOMDocument2& document) {
  if (problem.element == nullptr) return false;
  const std::string what = input.lock == nullptr ? "not written" : "not replaced";
  ComplainAtNode(*problem.element,
                 what + ", because what becomes of this element " + problem.reason, input,
                 document);
  return true;
}

void ComplainAtNode(const IXMLDOMNode& node, const std::string& reason, const Input& input,
                    IXMLDOMDocument2& document) {
  ComplainAt(input, PlaceOf(node, input.text, document), reason);
}

}  // namespace tool
