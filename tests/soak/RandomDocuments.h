#ifndef XMLDOM_TESTS_SOAK_RANDOMDOCUMENTS_H
#define XMLDOM_TESTS_SOAK_RANDOMDOCUMENTS_H

#include <string>

#include "soak/Random.h"

/// A text that is an XML document, or nearly one; without NUL bytes. One in three is damaged.
std::string AnyDocument(Random& random);

/// A document in ASCII with many entities, none of which leads to another.
std::string ManyEntities(Random& random);

/// A text of ASCII characters in one of the encodings of 16 bits, with its byte order mark.
std::string Widened(const std::string& text, bool bigEndian);

#endif
