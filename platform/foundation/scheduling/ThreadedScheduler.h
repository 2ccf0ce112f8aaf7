#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/foundation/scheduling/QueueScheduler.h"

namespace platform {

class ThreadPool;

// The scheduler for production: uses the machine's clock, runs the main queue on the thread that
// made the scheduler, and runs the other queues on two threads.
//
// Threads: as in QueueScheduler; the destructor on the thread that made the scheduler. It drops
// work that has not started.
class ThreadedScheduler final : public QueueScheduler {
 public:
  // Both arguments may be null. See QueueScheduler.
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
