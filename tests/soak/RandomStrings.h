#ifndef XMLDOM_TESTS_SOAK_RANDOMSTRINGS_H
#define XMLDOM_TESTS_SOAK_RANDOMSTRINGS_H

#include <string>

#include "soak/Random.h"

/// A text full of what is lost easily on the way through XML: white space, quotes, references,
/// markup, characters of every length. One in five also holds what XML cannot hold, or nearly so.
std::string AnyString(Random& random);

#endif
