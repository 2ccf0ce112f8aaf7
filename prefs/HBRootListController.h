#pragma once

#include <memory>
#include <mutex>

#include "platform/foundation/values/Value.h"
#include "platform/preferences/PSListController.h"
#include "platform/preferences/PSSpecifier.h"
#include "prefs/HBPreferences.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The base of the product's list pages: row values are read from and written to a store for the
// product's domain. Each page makes its own store. A change posts no notification.
// Threads: main; preferences() and setPreferences may be called from any thread.
class HBRootListController : public platform::PSListController {
  PLATFORM_CLASS(HBRootListController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  bool init() override;

  std::shared_ptr<HBPreferences> preferences() const;
  void setPreferences(std::shared_ptr<HBPreferences> preferences);

  // The value stored under the row's "key", of any type; otherwise the row's "default", which may
  // be none.
  platform::Value readPreferenceValue(
      const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  // Stores the value under the row's "key" and writes the file before returning. A row without a
  // "key" raises NSInvalidArgumentException.
  void setPreferenceValue(const platform::Value& value,
                          const std::shared_ptr<platform::PSSpecifier>& specifier) override;

 private:
  mutable std::mutex _mutex;  // guards _preferences; held for one read or swap
  std::shared_ptr<HBPreferences> _preferences;
};

}  // namespace zentrova
