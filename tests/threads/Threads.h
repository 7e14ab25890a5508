#ifndef XMLDOM_TESTS_THREADS_THREADS_H
#define XMLDOM_TESTS_THREADS_THREADS_H

#include <functional>

/// Runs `work` in four threads at once, with the number of the thread, again and again for as many
/// seconds as XMLDOM_SECONDS says in the environment; 1 when it does not.
void InFourThreads(const std::function<void(int thread)>& work);

#endif
