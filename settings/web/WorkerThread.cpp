#include "settings/web/WorkerThread.h"

#include <utility>

namespace settings {

WorkerThread::WorkerThread() : _thread([this] { run(); }) {}

WorkerThread::~WorkerThread() {
  {
    const std::lock_guard lock(_mutex);
    _stopped = true;
  }
  _changed.notify_all();
  _thread.join();
}

void WorkerThread::post(Work work) {
  {
    const std::lock_guard lock(_mutex);
    _work.push_back(std::move(work));
  }
  _changed.notify_all();
}

void WorkerThread::run() {
  std::unique_lock lock(_mutex);
  while (true) {
    _changed.wait(lock, [this] { return _stopped || !_work.empty(); });
    if (_stopped) return;
    const Work work = std::move(_work.front());
    _work.pop_front();
    lock.unlock();
    work();
    lock.lock();
  }
}

}  // namespace settings
