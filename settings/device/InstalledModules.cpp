#include "settings/device/InstalledModules.h"

#include <array>
#include <span>
#include <string>
#include <utility>

#include "platform/foundation/values/Collections.h"
#include "settings/device/DeviceTree.h"
#include "settings/device/TreeWriter.h"

namespace settings {

namespace {

using platform::Array;
using platform::Dictionary;
using platform::Value;

constexpr Paint blue{0, 122, 255};
constexpr Paint green{52, 199, 89};
constexpr Paint grey{142, 142, 147};
constexpr Paint indigo{88, 86, 214};
constexpr Paint orange{255, 149, 0};
constexpr Paint pink{255, 45, 85};
constexpr Paint red{255, 59, 48};
constexpr Paint yellow{240, 180, 0};

// What the product's own modules take the place of cannot be a favourite too.
constexpr std::array forbidden{
    "com.apple.control-center.ConnectivityModule",
    "com.apple.control-center.DisplayModule",
    "com.apple.control-center.AudioModule",
    "com.apple.mediaremote.controlcenter.nowplaying",
};

// What the main component stores when it runs for the first time.
constexpr std::array favourites{
    "com.apple.control-center.FlashlightModule",
    "com.apple.mobiletimer.controlcenter.timer",
    "com.apple.control-center.CalculatorModule",
    "com.apple.control-center.CameraModule",
};

Array arrayOf(std::span<const char* const> identifiers) {
  return Array(std::vector<Value>(identifiers.begin(), identifiers.end()));
}

// An icon of 29 points at the scale of three pixels a point.
constexpr int iconSide = 87;

void addModule(TreeWriter& writer, const InstalledModule& module) {
  std::string name(module.name);
  std::erase(name, ' ');
  const std::string folder = std::string(module.system ? systemModulesPath : addedModulesPath) +
                             "/" + name + "Module.bundle";
  writer.propertyList(folder + "/Info.plist",
                      Dictionary{{"CFBundleDisplayName", Value(module.name)},
                                 {"CFBundleIdentifier", Value(module.identifier)},
                                 {"CFBundleName", Value(name + "Module")},
                                 {"CFBundlePackageType", Value("BNDL")}});
  writer.file(folder + "/icon.png", encodePng(makeIcon(iconSide, module.colour, module.glyph)));
}

}  // namespace

const std::vector<InstalledModule>& installedModules() {
  static const std::vector<InstalledModule> modules{
      {"com.apple.control-center.FlashlightModule", "Flashlight", blue, Glyph::lamp, true, true},
      {"com.apple.mobiletimer.controlcenter.timer", "Timer", orange, Glyph::clock, true, true},
      {"com.apple.mobiletimer.controlcenter.alarm", "Alarm", orange, Glyph::bell, true, false},
      {"com.apple.mobiletimer.controlcenter.stopwatch", "Stopwatch", orange, Glyph::stopwatch, true,
       false},
      {"com.apple.control-center.CalculatorModule", "Calculator", grey, Glyph::calculator, true,
       true},
      {"com.apple.control-center.CameraModule", "Camera", grey, Glyph::camera, true, true},
      {"com.apple.control-center.QRCodeModule", "Code Scanner", grey, Glyph::frame, true, false},
      {"com.apple.control-center.MagnifierModule", "Magnifier", blue, Glyph::lens, true, false},
      {"com.apple.control-center.LowPowerModule", "Low Power Mode", yellow, Glyph::battery, true,
       true},
      {"com.apple.control-center.OrientationLockModule", "Orientation Lock", red, Glyph::turn, true,
       true},
      {"com.apple.control-center.MuteModule", "Silent Mode", red, Glyph::silence, true, false},
      {"com.apple.control-center.DisplayModule", "Brightness", blue, Glyph::rays, true, true},
      {"com.apple.control-center.AppearanceModule", "Dark Mode", indigo, Glyph::contrast, true,
       false},
      {"com.apple.control-center.TextSizeModule", "Text Size", blue, Glyph::letters, true, false},
      {"com.apple.control-center.AudioModule", "Volume", pink, Glyph::bars, true, true},
      {"com.apple.mediaremote.controlcenter.nowplaying", "Now Playing", pink, Glyph::play, true,
       true},
      {"com.apple.mediaremote.controlcenter.airplaymirroring", "Screen Mirroring", indigo,
       Glyph::screens, true, true},
      {"com.apple.replaykit.controlcenter.screencapture", "Screen Recording", red, Glyph::circle,
       true, false},
      {"com.apple.musicrecognition.controlcenter", "Music Recognition", blue, Glyph::note, true,
       false},
      {"com.apple.hearing.controlcenter", "Hearing", indigo, Glyph::ear, true, false},
      {"com.apple.soundrecognition.controlcenter", "Sound Recognition", indigo, Glyph::waves, true,
       false},
      {"com.apple.accessibility.controlcenter.shortcuts", "Accessibility Shortcuts", blue,
       Glyph::figure, true, false},
      {"com.apple.accessibility.controlcenter.guidedaccess", "Guided Access", grey, Glyph::lock,
       true, false},
      {"com.apple.control-center.ConnectivityModule", "Connectivity", green, Glyph::waves, true,
       true},
      {"com.apple.control-center.NotesModule", "Notes", yellow, Glyph::page, true, false},
      {"com.apple.control-center.VoiceMemosModule", "Voice Memos", red, Glyph::voice, true, false},
      {"com.apple.control-center.WalletModule", "Wallet", green, Glyph::wallet, true, false},
      {"com.apple.control-center.RemoteModule", "Remote", grey, Glyph::remote, true, false},
      {"com.apple.control-center.HomeModule", "Home", orange, Glyph::house, true, false},
      {"com.apple.control-center.FocusModule", "Focus", indigo, Glyph::moon, true, true},
      {"org.example.modules.lantern", "Lantern", yellow, Glyph::rays, false, true},
      {"org.example.modules.restart", "Restart Menu", red, Glyph::power, false, false},
      {"org.example.modules.dataswitch", "Mobile Data", green, Glyph::bars, false, false},
      {"org.example.modules.humidity", "Humidity", blue, Glyph::drop, false, false},
      {"org.example.modules.closeall", "Close All Apps", grey, Glyph::cross, false, false},
      {"org.example.modules.vault", "Vault", indigo, Glyph::key, false, false},
  };
  return modules;
}

void addInstalledModules(TreeWriter& writer) {
  std::vector<Value> enabled;
  for (const auto& module : installedModules()) {
    addModule(writer, module);
    if (module.enabled) enabled.emplace_back(module.identifier);
  }
  writer.propertyList(moduleConfigurationPath,
                      Dictionary{{"module-identifiers", Array(std::move(enabled))},
                                 {"version", Value::integer(1)}});
  writer.propertyList(forbiddenModulesPath, arrayOf(forbidden));
  writer.propertyList(productPreferencesPath,
                      Dictionary{{"groupedIdentifiers", arrayOf(favourites)}});
}

}  // namespace settings
