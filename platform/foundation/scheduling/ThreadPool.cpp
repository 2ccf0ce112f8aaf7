#include "platform/foundation/scheduling/ThreadPool.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/objects/CurrentQueue.h"

namespace platform {

// Has at most one piece of work in the pool at a time, to keep the order.
class ThreadPool::Queue final : public SerialQueue, public std::enable_shared_from_this<Queue> {
 public:
  Queue(std::string label, std::weak_ptr<ThreadPool> pool)
      : _label(std::move(label)), _pool(std::move(pool)) {}

  const std::string& label() const override { return _label; }

  void async(Work work) override {
    const auto pool = _pool.lock();
    if (!pool) return;
    {
      const std::lock_guard lock(_mutex);
      if (_closed) return;
      _pending.push_back(workOfQueue(_label, std::move(work)));
      if (std::exchange(_inPool, true)) return;
    }
    pushNext(*pool);
  }

  // Drops waiting work, which may own this queue.
  void close() {
    std::deque<Work> dropped;
    {
      const std::lock_guard lock(_mutex);
      _closed = true;
      dropped.swap(_pending);
    }
  }

 private:
  void pushNext(ThreadPool& pool) {
    pool.push([self = shared_from_this()] { self->runOne(); });
  }

  void runOne() {
    Work next;
    {
      const std::lock_guard lock(_mutex);
      if (_pending.empty()) return;
      next = std::move(_pending.front());
      _pending.pop_front();
    }
    const auto pool = _pool.lock();
    if (!pool) return;
    pool->_run(std::move(next));
    {
      const std::lock_guard lock(_mutex);
      _inPool = !_pending.empty();
      if (!_inPool) return;
    }
    pushNext(*pool);
  }

  const std::string _label;
  const std::weak_ptr<ThreadPool> _pool;
  std::mutex _mutex;
  std::deque<Work> _pending;
  bool _inPool = false;
  bool _closed = false;
};

ThreadPool::ThreadPool(std::size_t threads, std::function<void(Work)> run) : _run(std::move(run)) {
  for (std::size_t index = 0; index < std::max<std::size_t>(threads, 1); ++index) {
    _threads.emplace_back([this](const std::stop_token& stop) { work(stop); });
  }
}

ThreadPool::~ThreadPool() {
  stop();
}

void ThreadPool::push(Work work) {
  {
    const std::lock_guard lock(_mutex);
    if (_stopped) return;
    _pending.push_back(std::move(work));
  }
  _changed.notify_one();
}

std::shared_ptr<SerialQueue> ThreadPool::makeSerialQueue(std::string label) {
  auto queue = std::make_shared<Queue>(std::move(label), weak_from_this());
  const std::lock_guard lock(_mutex);
  if (_stopped) queue->close();
  std::erase_if(_queues, [](const auto& each) { return each.expired(); });
  _queues.push_back(queue);
  return queue;
}

void ThreadPool::work(const std::stop_token& stop) {
  std::unique_lock lock(_mutex);
  while (_changed.wait(lock, stop, [this] { return !_pending.empty(); })) {
    Work next = std::move(_pending.front());
    _pending.pop_front();
    lock.unlock();
    _run(std::move(next));
    lock.lock();
  }
}

void ThreadPool::stop() {
  std::deque<Work> dropped;
  std::vector<std::weak_ptr<Queue>> queues;
  {
    const std::lock_guard lock(_mutex);
    _stopped = true;
    dropped.swap(_pending);
    queues.swap(_queues);
  }
  for (std::jthread& thread : _threads) thread.request_stop();
  _threads.clear();
  for (const auto& each : queues) {
    if (const auto queue = each.lock()) queue->close();
  }
}

}  // namespace platform
