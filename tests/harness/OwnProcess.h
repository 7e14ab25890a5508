#ifndef XMLDOM_TESTS_HARNESS_OWNPROCESS_H
#define XMLDOM_TESTS_HARNESS_OWNPROCESS_H

#include <functional>
#include <string>

/// Runs `call` in a child process, because it changes what belongs to the whole process and cannot
/// be set back. Result: what it returns; behind that the wait status, when the child does not end
/// with 0.
std::string InOwnProcess(const std::function<std::string()>& call);

#endif
