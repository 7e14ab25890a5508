#ifndef XMLDOM_TESTS_HARNESS_ALLOCATIONFAILURE_H
#define XMLDOM_TESTS_HARNESS_ALLOCATIONFAILURE_H

#include "harness/Allocation.h"

/// While it lives, memory is out for all of the process once `allowed` more allocations have
/// succeeded: malloc, calloc and realloc give null, and so operator new throws std::bad_alloc.
class AllocationFailure {
 public:
  enum Reach {
    EVERYBODY,
    ALL_BUT_EXPAT  ///< A parser that could not be made ends in an assertion.
  };

  explicit AllocationFailure(int allowed, Reach reach = EVERYBODY);
  ~AllocationFailure();

  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;

  /// Whether an allocation has failed.
  bool HasStruck() const;

  /// False where a sanitizer brings a malloc of its own, or the C library lets nobody replace its
  /// own: then only operator new fails, and blocks are not counted.
  static bool ReachesMalloc();

 private:
  OutOfMemory m_operatorNew;
};

/// How many blocks of the C heap are allocated and not yet freed.
long HeapBlocks();

#endif
