#ifndef XMLDOM_TESTS_HARNESS_SMALLSTACK_H
#define XMLDOM_TESTS_HARNESS_SMALLSTACK_H

#include <functional>

/// Runs `work` to its end in a thread that has the stack of a small device, 256 KiB.
/// Result: the processor time it took, in seconds.
double OnSmallStack(const std::function<void()>& work);

#endif
