#pragma once

#include <optional>
#include <string>

#include "platform/foundation/values/Value.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The settings of one of the product's own modules: a list page whose rows come from the resource
// that belongs to the module. Threads: main.
class ZVRManageModuleViewController : public HBRootListController {
  PLATFORM_CLASS(ZVRManageModuleViewController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // Chooses the list for the catalogue entry; none for any other value. Leaves `identifier` empty,
  // so that the title of the navigation controller is cleared unless a caller sets it.
  virtual bool initWithIdentifier(const platform::Value& identifier);

  const std::optional<std::string>& identifier() const noexcept { return _identifier; }
  void setIdentifier(std::optional<std::string> identifier) { _identifier = std::move(identifier); }
  // The name of the list, without extension.
  const std::optional<std::string>& plistName() const noexcept { return _plistName; }
  void setPlistName(std::optional<std::string> name) { _plistName = std::move(name); }

  platform::PSSpecifiers specifiers() override;
  void viewDidLoad() override;

 private:
  std::optional<std::string> _identifier;
  std::optional<std::string> _plistName;
};

}  // namespace zentrova
