#ifndef XMLDOM_TESTS_HARNESS_EXPATVERSION_H
#define XMLDOM_TESTS_HARNESS_EXPATVERSION_H

/// While it lives, Expat says that it is of another version than it is. Versions below 2.7 are
/// those that expand entities by recursion, and those below 2.4 have no code for an amplification.
class ExpatVersion {
 public:
  ExpatVersion(int major, int minor, int micro);
  ~ExpatVersion();

  ExpatVersion(const ExpatVersion&) = delete;
  ExpatVersion& operator=(const ExpatVersion&) = delete;
};

#endif
