#ifndef XMLDOM_TESTS_SOAK_RANDOMPATHS_H
#define XMLDOM_TESTS_SOAK_RANDOMPATHS_H

#include <string>

#include "soak/Random.h"

/// A predicate without its brackets, malformed ones among them.
std::string AnyPredicate(Random& random);

/// A step of a path; `dots`: it may be "." or "..".
std::string AnyStep(Random& random, bool dots);

/// A path of up to `most` steps.
std::string AnyPath(Random& random, int most, bool dots);

#endif
