#ifndef XMLDOM_TESTS_HARNESS_OWNPROCESS_H
#define XMLDOM_TESTS_HARNESS_OWNPROCESS_H

#include <functional>
#include <string>

/// What `call` returns in a child process, for what changes the state of a whole process. Result:
/// when that process ends in another way, how it has ended.
std::string InOwnProcess(const std::function<std::string()>& call);

#endif
