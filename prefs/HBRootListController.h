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

// The base of the product's list pages: every row's value is read from and written to a store for
// the product's domain, which the page makes for itself. Nothing is announced when a row changes.
// Threads: main, but for preferences() and setPreferences, which any thread may call.
class HBRootListController : public platform::PSListController {
  PLATFORM_CLASS(HBRootListController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  bool init() override;

  std::shared_ptr<HBPreferences> preferences() const;
  void setPreferences(std::shared_ptr<HBPreferences> preferences);

  // What is stored under the row's "key", of whatever type it is; else the row's "default", which
  // may be none.
  platform::Value readPreferenceValue(
      const std::shared_ptr<platform::PSSpecifier>& specifier) override;
  // Stores the value under the row's "key"; the file is written when this returns. A row without
  // "key" raises NSInvalidArgumentException.
  void setPreferenceValue(const platform::Value& value,
                          const std::shared_ptr<platform::PSSpecifier>& specifier) override;

 private:
  mutable std::mutex _mutex;  // guards _preferences, held for one look or exchange
  std::shared_ptr<HBPreferences> _preferences;
};

}  // namespace zentrova
