#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/objects/Object.h"
#include "platform/foundation/values/Collections.h"

namespace platform {

struct NSNotification {
  std::string name;
  std::shared_ptr<Object> object;  // the sender, may be empty
  Dictionary userInfo;
};

// Delivers notifications to observers, on the posting thread, in the order in which the observers
// were added. Threads: any.
class NSNotificationCenter : public Object {
  PLATFORM_CLASS(NSNotificationCenter)

 public:
  using Block = std::function<void(const NSNotification&)>;

  // Returns the center of the current process.
  static NSNotificationCenter& defaultCenter();

  // Without a name, observes all names; without an object, all senders. Does not keep the sender
  // alive. Keeps the block until the returned token is removed.
  std::shared_ptr<Object> addObserverForName(std::optional<std::string> name,
                                             const std::shared_ptr<Object>& object, Block block);
  // Ignores unknown tokens. Does not stop a block that is running.
  void removeObserver(const std::shared_ptr<Object>& token);
  void postNotificationName(std::string name, const std::shared_ptr<Object>& object,
                            Dictionary userInfo = {});

 private:
  struct Observer {
    std::shared_ptr<Object> token;
    std::optional<std::string> name;
    std::weak_ptr<Object> object;
    bool anyObject = true;
    Block block;
  };
  bool isObserving(const std::shared_ptr<Object>& token);

  std::mutex _mutex;
  std::vector<Observer> _observers;
};

}  // namespace platform
