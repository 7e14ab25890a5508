#ifndef XMLDOM_TESTS_HARNESS_READCALLS_H
#define XMLDOM_TESTS_HARNESS_READCALLS_H

#include <sys/types.h>

#include <cstddef>
#include <functional>

/// While it lives, all calls of the system's read in this process come here instead.
class ReadCalls {
 public:
  typedef std::function<ssize_t(int file, void* memory, std::size_t size)> Function;

  explicit ReadCalls(const Function& function);
  ~ReadCalls();

  ReadCalls(const ReadCalls&) = delete;
  ReadCalls& operator=(const ReadCalls&) = delete;

  /// What read itself does.
  static ssize_t Really(int file, void* memory, std::size_t size);

 private:
  Function m_function;
};

#endif
