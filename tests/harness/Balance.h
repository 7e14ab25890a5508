#ifndef XMLDOM_TESTS_HARNESS_BALANCE_H
#define XMLDOM_TESTS_HARNESS_BALANCE_H

#include <string>

/// Every live-object counter of the library and the count of outstanding BSTRs, at one moment.
class Balance {
 public:
  static Balance Now();

  /// Empty when nothing has changed since `before`, else one line for each count that has.
  std::string ChangesSince(const Balance& before) const;

 private:
  static const int kCounts = 11;
  long m_counts[kCounts];
};

#endif
