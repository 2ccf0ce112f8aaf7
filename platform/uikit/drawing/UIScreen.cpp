#include "platform/uikit/drawing/UIScreen.h"

#include "platform/foundation/objects/Process.h"
#include "platform/uikit/drawing/UITraits.h"

namespace platform {
namespace {

struct MainScreen {
  std::shared_ptr<UIScreen> screen = make<UIScreen>();
};

}  // namespace

std::shared_ptr<UIScreen> UIScreen::mainScreen() {
  return Process::current().once<MainScreen>().screen;
}

Rect UIScreen::bounds() const {
  return {0, 0, currentTraits().screenWidth, currentTraits().screenHeight};
}

double UIScreen::scale() const {
  return currentTraits().screenScale;
}

}  // namespace platform
