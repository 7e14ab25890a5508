#ifndef XMLDOM_TESTS_HARNESS_ENCODINGS_H
#define XMLDOM_TESTS_HARNESS_ENCODINGS_H

#include <ostream>
#include <string>
#include <vector>

/// A document in one of the encodings that the parser reads by itself.
struct EncodedDocument {
  const char* encoding;
  std::string bytes;
  bool holdsNul;  // so that it cannot be loaded as a text
};

std::ostream& operator<<(std::ostream& out, const EncodedDocument& document);

/// One document in every encoding. Its text, comments, processing instructions, CDATA section,
/// attribute value and declarations have several KiB each, so that the parser converts each of them
/// in several pieces. No character needs more than one byte in ISO-8859-1, and in US-ASCII those
/// that do not exist there are written as references.
const std::vector<EncodedDocument>& EncodedDocuments();

#endif
