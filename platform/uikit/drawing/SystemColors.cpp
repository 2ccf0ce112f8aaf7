#include "platform/uikit/drawing/SystemColors.h"

#include <algorithm>
#include <array>

namespace platform {
namespace {

constexpr ColorComponents rgb(double red, double green, double blue, double alpha = 1) {
  return {red / 255, green / 255, blue / 255, alpha};
}

constexpr std::array colors = {
    SystemColor{"labelColor", rgb(0, 0, 0), rgb(255, 255, 255)},
    SystemColor{"linkColor", rgb(0, 122, 255), rgb(9, 132, 255)},
    SystemColor{"opaqueSeparatorColor", rgb(198, 198, 200), rgb(56, 56, 58)},
    SystemColor{"placeholderTextColor", rgb(60, 60, 67, 0.3), rgb(235, 235, 245, 0.3)},
    SystemColor{"quaternaryLabelColor", rgb(60, 60, 67, 0.18), rgb(235, 235, 245, 0.16)},
    SystemColor{"quaternarySystemFillColor", rgb(116, 116, 128, 0.08), rgb(118, 118, 128, 0.18)},
    SystemColor{"secondaryLabelColor", rgb(60, 60, 67, 0.6), rgb(235, 235, 245, 0.6)},
    SystemColor{"secondarySystemBackgroundColor", rgb(242, 242, 247), rgb(28, 28, 30)},
    SystemColor{"secondarySystemFillColor", rgb(120, 120, 128, 0.16), rgb(120, 120, 128, 0.32)},
    SystemColor{"secondarySystemGroupedBackgroundColor", rgb(255, 255, 255), rgb(28, 28, 30)},
    SystemColor{"separatorColor", rgb(60, 60, 67, 0.29), rgb(84, 84, 88, 0.6)},
    SystemColor{"systemBackgroundColor", rgb(255, 255, 255), rgb(0, 0, 0)},
    SystemColor{"systemBlueColor", rgb(0, 122, 255), rgb(10, 132, 255)},
    SystemColor{"systemBrownColor", rgb(162, 132, 94), rgb(172, 142, 104)},
    SystemColor{"systemCyanColor", rgb(50, 173, 230), rgb(100, 210, 255)},
    SystemColor{"systemFillColor", rgb(120, 120, 128, 0.2), rgb(120, 120, 128, 0.36)},
    SystemColor{"systemGray2Color", rgb(174, 174, 178), rgb(99, 99, 102)},
    SystemColor{"systemGray3Color", rgb(199, 199, 204), rgb(72, 72, 74)},
    SystemColor{"systemGray4Color", rgb(209, 209, 214), rgb(58, 58, 60)},
    SystemColor{"systemGray5Color", rgb(229, 229, 234), rgb(44, 44, 46)},
    SystemColor{"systemGray6Color", rgb(242, 242, 247), rgb(28, 28, 30)},
    SystemColor{"systemGrayColor", rgb(142, 142, 147), rgb(142, 142, 147)},
    SystemColor{"systemGreenColor", rgb(52, 199, 89), rgb(48, 209, 88)},
    SystemColor{"systemGroupedBackgroundColor", rgb(242, 242, 247), rgb(0, 0, 0)},
    SystemColor{"systemIndigoColor", rgb(88, 86, 214), rgb(94, 92, 230)},
    SystemColor{"systemMintColor", rgb(0, 199, 190), rgb(102, 212, 207)},
    SystemColor{"systemOrangeColor", rgb(255, 149, 0), rgb(255, 159, 10)},
    SystemColor{"systemPinkColor", rgb(255, 45, 85), rgb(255, 55, 95)},
    SystemColor{"systemPurpleColor", rgb(175, 82, 222), rgb(191, 90, 242)},
    SystemColor{"systemRedColor", rgb(255, 59, 48), rgb(255, 69, 58)},
    SystemColor{"systemTealColor", rgb(48, 176, 199), rgb(64, 200, 224)},
    SystemColor{"systemYellowColor", rgb(255, 204, 0), rgb(255, 214, 10)},
    SystemColor{"tertiaryLabelColor", rgb(60, 60, 67, 0.3), rgb(235, 235, 245, 0.3)},
    SystemColor{"tertiarySystemBackgroundColor", rgb(255, 255, 255), rgb(44, 44, 46)},
    SystemColor{"tertiarySystemFillColor", rgb(118, 118, 128, 0.12), rgb(118, 118, 128, 0.24)},
    SystemColor{"tertiarySystemGroupedBackgroundColor", rgb(242, 242, 247), rgb(44, 44, 46)},
};

static_assert(std::ranges::is_sorted(colors, {}, &SystemColor::name));

}  // namespace

const SystemColor* findSystemColor(std::string_view name) noexcept {
  const auto found = std::ranges::lower_bound(colors, name, {}, &SystemColor::name);
  return found != colors.end() && found->name == name ? &*found : nullptr;
}

}  // namespace platform
