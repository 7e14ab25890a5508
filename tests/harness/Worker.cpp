#include "harness/Worker.h"

Worker::Worker() : m_work(nullptr), m_isEnding(false), m_thread([this] { Loop(); }) {}

Worker::~Worker() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isEnding = true;
  }
  m_changed.notify_all();
  m_thread.join();
}

void Worker::Run(const std::function<void()>& work) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_work = &work;
  m_changed.notify_all();
  m_changed.wait(lock, [this] { return m_work == nullptr; });
}

void Worker::Loop() {
  std::unique_lock<std::mutex> lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return m_isEnding || m_work != nullptr; });
    if (m_isEnding) return;
    (*m_work)();
    m_work = nullptr;
    m_changed.notify_all();
  }
}
