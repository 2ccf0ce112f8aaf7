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
  std::shared_ptr<Object> object;  // the sender; may be empty
  Dictionary userInfo;
};

// Hands notifications to those who asked for them, on the thread that posts, in the order in which
// they began to observe. Threads: any.
class NSNotificationCenter : public Object {
  PLATFORM_CLASS(NSNotificationCenter)

 public:
  using Block = std::function<void(const NSNotification&)>;

  // The current process's center.
  static NSNotificationCenter& defaultCenter();

  // No name: every name; no object: every sender. The sender is not kept alive. The block stays,
  // with what it holds, until the token that this gives is removed.
  std::shared_ptr<Object> addObserverForName(std::optional<std::string> name,
                                             const std::shared_ptr<Object>& object, Block block);
  // Nothing where the token is unknown. A block that is running goes on.
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
