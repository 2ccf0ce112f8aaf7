#pragma once

#include <memory>

#include "platform/preferences/PSTableCell.h"

namespace platform {
class ClassRegistry;
}

namespace zentrova {

// A cell whose title has the tint colour that the cell inherits from the page around it, also while
// the row is highlighted. Subtitle and accessory keep their colours. Threads: main.
class HBTintedTableCell : public platform::PSTableCell {
  PLATFORM_CLASS(HBTintedTableCell)

 public:
  static void registerClass(platform::ClassRegistry& registry);

  // Each runs the base class's version first, so that nothing it sets undoes the tint.
  void tintColorDidChange() override;
  void refreshCellContentsWithSpecifier(
      const std::shared_ptr<platform::PSSpecifier>& specifier) override;

 private:
  void tintTitle();
};

}  // namespace zentrova
