#ifndef XMLDOM_TESTS_HARNESS_INPUTCONTEXT_H
#define XMLDOM_TESTS_HARNESS_INPUTCONTEXT_H

#include <string>

/// Whether the Expat in use keeps its input, from which the tag at an error is taken. One that was
/// built without XML_CONTEXT_BYTES does not.
bool HasInputContext();

/// The tag that an error shows where `tag` stands in the text: "undefined" without input context.
std::string ShownTag(const std::string& tag);

#endif
