#ifndef XMLDOM_TESTS_HARNESS_WORKER_H
#define XMLDOM_TESTS_HARNESS_WORKER_H

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// A thread that waits for work, so that what it has cached from one piece of work is still there
/// for the next.
class Worker {
 public:
  Worker();
  ~Worker();

  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;

  /// Runs `work` in the thread, and waits for its end.
  void Run(const std::function<void()>& work);

 private:
  void Loop();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  const std::function<void()>* m_work;  // null while there is none
  bool m_isEnding;
  std::thread m_thread;
};

#endif
