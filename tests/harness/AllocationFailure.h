#ifndef XMLDOM_TESTS_HARNESS_ALLOCATIONFAILURE_H
#define XMLDOM_TESTS_HARNESS_ALLOCATIONFAILURE_H

#include "harness/Allocation.h"

/// While it lives, memory is out for all of the process once `allowed` more allocations have
/// succeeded: malloc, calloc and realloc give null, and so operator new throws std::bad_alloc.
class AllocationFailure {
 public:
  enum Reach {
    EVERYBODY,
    ALL_BUT_NEW_PARSERS,  ///< A parser that could not be made ends in an assertion.
    ALL_BUT_EXPAT         ///< Nothing of the parser fails.
  };

  enum Extent {
    FROM_THERE_ON,
    ONCE  ///< One allocation fails, and those after it succeed again.
  };

  explicit AllocationFailure(int allowed, Reach reach = EVERYBODY, Extent extent = FROM_THERE_ON);
  ~AllocationFailure();

  AllocationFailure(const AllocationFailure&) = delete;
  AllocationFailure& operator=(const AllocationFailure&) = delete;

  /// Whether an allocation has failed.
  bool HasStruck() const;

  /// How many allocations have succeeded, those aside that could not have failed; what counts after
  /// one has failed is not said.
  int Succeeded() const;

  /// False where a sanitizer brings a malloc of its own, or the C library lets nobody replace its
  /// own: then only operator new fails, and blocks are not counted.
  static bool ReachesMalloc();

 private:
  const int m_allowed;
  OutOfMemory m_operatorNew;
};

/// How many blocks of the C heap are allocated and not yet freed.
long HeapBlocks();

#endif
