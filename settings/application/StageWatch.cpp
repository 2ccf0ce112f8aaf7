#include "settings/application/StageWatch.h"

#include "platform/preferences/PSListController.h"
#include "settings/application/SettingsProcess.h"

namespace settings {
namespace {

std::optional<platform::ViewAnimation> dissolveOf(const platform::UIView& view) {
  const auto& animation = view.lastAnimation();
  if (!animation || animation->kind != platform::ViewAnimationKind::crossDissolve) return {};
  return animation;
}

}  // namespace

StageWatch::Stage StageWatch::stageOf(SettingsProcess& process) {
  Stage stage;
  const auto navigation = process.inner();
  if (!navigation) return stage;
  for (const auto& page : navigation->viewControllers())
    stage.pages.push_back(page->nodeIdentifier());
  if (const auto presented = process.outer()->presentedViewController()) {
    stage.presented = presented->nodeIdentifier();
  }
  const auto list = std::dynamic_pointer_cast<platform::PSListController>(process.topPage());
  if (!list || !list->table()) return stage;
  if (const auto dissolve = dissolveOf(*list->table())) {
    stage.dissolve = dissolve->identifier;
    stage.dissolveSeconds = dissolve->duration;
  }
  return stage;
}

void StageWatch::reset(SettingsProcess& process) {
  _stage = stageOf(process);
}

void StageWatch::look(SettingsProcess& process, const Report& report) {
  const Stage before = std::exchange(_stage, stageOf(process));
  constexpr double duration = platform::controllerTransitionDuration;
  if (_stage.pages.size() > before.pages.size()) report(TransitionKind::push, duration);
  if (_stage.pages.size() < before.pages.size()) report(TransitionKind::pop, duration);
  if (_stage.presented && _stage.presented != before.presented) {
    report(TransitionKind::present, duration);
  }
  if (before.presented && !_stage.presented) report(TransitionKind::dismiss, duration);
  if (_stage.dissolve > before.dissolve) {
    report(TransitionKind::crossDissolve, _stage.dissolveSeconds);
  }
}

}  // namespace settings
