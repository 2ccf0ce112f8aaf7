#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/scheduling/QueueScheduler.h"

namespace platform {

class ThreadPool;

// The scheduler of the real world: the clock of the machine, the main queue on the thread that
// made the scheduler, the queues on two threads of their own.
//
// Threads: as of QueueScheduler; the destructor on the thread that made it. Work that has not begun
// when the scheduler goes away does not run.
class ThreadedScheduler final : public QueueScheduler {
 public:
  // Null for no process, and for no outer queue. See QueueScheduler.
  explicit ThreadedScheduler(Process* process = nullptr,
                             std::shared_ptr<MainQueue> outer = nullptr);
  ~ThreadedScheduler() override;

  double now() const override;
  void asyncGlobal(Work work) override;
  std::shared_ptr<SerialQueue> makeSerialQueue(std::string label) override;

 private:
  void runInBackground(Work work);
  std::int64_t clock() const override;
  std::int64_t nextTime() const override;
  void dropBackground() override;

  const std::int64_t _start;
  std::shared_ptr<ThreadPool> _pool;
};

}  // namespace platform
