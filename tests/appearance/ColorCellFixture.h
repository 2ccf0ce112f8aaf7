#pragma once

#include "tests/appearance/AppearanceFixture.h"

namespace zentrova::tests {

// A colour list with rows "first", "second" and "plain" in a window.
class ColorCellTest : public AppearanceTest {
 protected:
  void writeRows(const platform::Value& defaultValue = "00FF00FF") {
    writeList("GlobalColors", {plainRow("PSGroupCell", "group"), colorRow("first", defaultValue),
                               colorRow("second", "0000FFFF"), plainRow("PSLinkCell", "plain")});
  }
  std::shared_ptr<ZVRCustomizeColorListViewController> showRows(
      const platform::Value& defaultValue = "00FF00FF") {
    writeRows(defaultValue);
    page = show(platform::make(&ZVRCustomizeColorListViewController::initWithStyle, 0));
    return page;
  }
  std::shared_ptr<HBColorPickerTableCell> cell(const std::string& identifier = "first") {
    return colorCellOf(*page, identifier);
  }
  std::shared_ptr<platform::UIColor> shown(const std::string& identifier = "first") {
    return cell(identifier)->colorPreview()->backgroundColor();
  }
  platform::ColorComponents shownComponents(const std::string& identifier = "first") {
    return shown(identifier)->components();
  }

  static constexpr platform::ColorComponents red{1, 0, 0, 1};
  static constexpr platform::ColorComponents green{0, 1, 0, 1};
  static constexpr platform::ColorComponents blue{0, 0, 1, 1};
  static constexpr platform::ColorComponents clear{0, 0, 0, 0};

  std::shared_ptr<ZVRCustomizeColorListViewController> page;
};

}  // namespace zentrova::tests
