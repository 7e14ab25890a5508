#ifndef XMLDOM_TESTS_TOOL_LOADING_H
#define XMLDOM_TESTS_TOOL_LOADING_H

#include <gtest/gtest.h>
#include <tools/document/DocumentLoad.h>
#include <xmldom/dom/XMLDocument.h>

#include <string>

/// The tree of a text, as the commands of the tool load it. Result: null when it is not
/// well-formed.
inline XMLPtr<IXMLDOMDocument2> TryLoad(const std::string& text) {
  tool::LoadProblem problem;
  return tool::LoadText(text, problem);
}

/// The same for a text that has to be well-formed; the case fails when it is not.
inline XMLPtr<IXMLDOMDocument2> Load(const std::string& text) {
  tool::LoadProblem problem;
  const XMLPtr<IXMLDOMDocument2> document = tool::LoadText(text, problem);
  EXPECT_NE(nullptr, document) << text << ": " << problem.reason;
  return document;
}

#endif
