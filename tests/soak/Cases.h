#ifndef XMLDOM_TESTS_SOAK_CASES_H
#define XMLDOM_TESTS_SOAK_CASES_H

#include <functional>
#include <string>

#include "soak/Observer.h"
#include "soak/Random.h"

/// Runs one case: makes its input from `random`, and observes a member of the library and the plain
/// way. Result: what differs; empty when nothing does.
typedef std::function<std::string(Random random, Observer& observer)> RandomCase;

/// Runs cases up to the first that finds a difference, which fails the test and tells how to run it
/// again. How many, and from which seed, can be said in the environment:
///   XMLDOM_SEED   the seed; 1 unless said
///   XMLDOM_CASES  how many cases; 20000 unless said, and fewer in a sanitized build
///   XMLDOM_CASE   the number of the only case to run
/// A case depends on `subject`, the seed and its number alone. `share` is how many of the cases to
/// run, in hundredths, where a single case takes long or is many calls.
void RunCases(const std::string& subject, const RandomCase& runCase, int share = 100);

#endif
