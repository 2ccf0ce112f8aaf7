#pragma once

#include <optional>
#include <string>

#include "platform/foundation/values/Value.h"
#include "prefs/HBRootListController.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// The settings page of one of the product's own modules. Its rows come from the module's list in
// the resources. Threads: main.
class ZVRManageModuleViewController : public HBRootListController {
  PLATFORM_CLASS(ZVRManageModuleViewController)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // Selects the list of the catalogue entry, or no list for any other value. Leaves `identifier`
  // empty, so that the title of the navigation controller is cleared unless a caller sets it.
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
