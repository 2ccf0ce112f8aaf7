#include "settings/web/PhotoReader.h"

#include <memory>
#include <utility>

#include "platform/foundation/Collections.h"

namespace settings {
namespace {

platform::Data dataOf(std::string bytes) {
  auto kept = std::make_shared<const std::string>(std::move(bytes));
  const std::string_view view = *kept;
  return platform::Data::sharing(std::move(kept), view);
}

}  // namespace

PhotoReader::PhotoReader() : _thread([this] { run(); }) {}

PhotoReader::~PhotoReader() {
  {
    const std::lock_guard lock(_mutex);
    _stopped = true;
  }
  _changed.notify_all();
  _thread.join();
}

void PhotoReader::read(std::string bytes, Done done) {
  {
    const std::lock_guard lock(_mutex);
    _work.push_back({std::move(bytes), std::move(done)});
  }
  _changed.notify_all();
}

void PhotoReader::run() {
  std::unique_lock lock(_mutex);
  while (true) {
    _changed.wait(lock, [this] { return _stopped || !_work.empty(); });
    if (_stopped) return;
    Work work = std::move(_work.front());
    _work.pop_front();
    lock.unlock();
    work.done(readPhoto(dataOf(std::move(work.bytes))));
    lock.lock();
  }
}

}  // namespace settings
