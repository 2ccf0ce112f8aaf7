#include "platform/foundation/objects/NSNotificationCenter.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/foundation/objects/Process.h"

namespace platform {

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
  return Process::current().once<NSNotificationCenter>();
}

std::shared_ptr<Object> NSNotificationCenter::addObserverForName(
    std::optional<std::string> name, const std::shared_ptr<Object>& object, Block block) {
  auto token = std::make_shared<Object>();
  const std::lock_guard lock(_mutex);
  _observers.push_back({token, std::move(name), object, object == nullptr, std::move(block)});
  return token;
}

void NSNotificationCenter::removeObserver(const std::shared_ptr<Object>& token) {
  std::vector<Observer> removed;
  const std::lock_guard lock(_mutex);
  const auto first =
      std::stable_partition(_observers.begin(), _observers.end(),
                            [&](const Observer& observer) { return observer.token != token; });
  std::move(first, _observers.end(), std::back_inserter(removed));
  _observers.erase(first, _observers.end());
}

bool NSNotificationCenter::isObserving(const std::shared_ptr<Object>& token) {
  const std::lock_guard lock(_mutex);
  return std::any_of(_observers.begin(), _observers.end(),
                     [&](const Observer& observer) { return observer.token == token; });
}

void NSNotificationCenter::postNotificationName(std::string name,
                                                const std::shared_ptr<Object>& object,
                                                Dictionary userInfo) {
  std::vector<Observer> matching;
  {
    const std::lock_guard lock(_mutex);
    for (const Observer& observer : _observers) {
      const bool nameFits = !observer.name || *observer.name == name;
      const bool objectFits =
          observer.anyObject || (object != nullptr && observer.object.lock() == object);
      if (nameFits && objectFits) matching.push_back(observer);
    }
  }
  const NSNotification notification{std::move(name), object, std::move(userInfo)};
  for (const Observer& observer : matching) {
    if (isObserving(observer.token)) observer.block(notification);
  }
}

}  // namespace platform
