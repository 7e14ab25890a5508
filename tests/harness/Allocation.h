#ifndef XMLDOM_TESTS_HARNESS_ALLOCATION_H
#define XMLDOM_TESTS_HARNESS_ALLOCATION_H

#include <new>

// The test binary brings its own operator new and operator delete. They abort when the plain form
// and the array form are mixed, and they can be made to fail.

/// While it lives, operator new throws std::bad_alloc once `allowed` more calls have succeeded.
class OutOfMemory {
 public:
  /// With `once`, those after the call that was refused succeed again.
  explicit OutOfMemory(int allowed = 0, bool once = false);
  ~OutOfMemory();

  /// Whether a call has been refused.
  bool HasStruck() const;

  /// How many calls have succeeded before one was refused.
  int Succeeded() const;

  OutOfMemory(const OutOfMemory&) = delete;
  OutOfMemory& operator=(const OutOfMemory&) = delete;

 private:
  const int m_allowed;
};

/// Runs `call` with its first allocation failing, then with its second, and so on until it gets
/// through. Result: how many times it threw std::bad_alloc.
template <class Call>
int CountFailingAllocations(Call call) {
  for (int allowed = 0;; ++allowed) {
    try {
      OutOfMemory limit(allowed);
      call();
      return allowed;
    } catch (const std::bad_alloc&) {
    }
  }
}

#endif
