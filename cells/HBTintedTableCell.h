#pragma once

#include <memory>

#include "platform/preferences/PSTableCell.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// A cell whose title has the tint colour that the cell inherits from its page, also while the row
// is highlighted. Subtitle and accessory keep their colours. Threads: main.
class HBTintedTableCell : public platform::PSTableCell {
  PLATFORM_CLASS(HBTintedTableCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // Both call the base class first, so that it cannot overwrite the tint.
  void tintColorDidChange() override;
  void refreshCellContentsWithSpecifier(
      const std::shared_ptr<platform::PSSpecifier>& specifier) override;

 private:
  void tintTitle();
};

}  // namespace zentrova
