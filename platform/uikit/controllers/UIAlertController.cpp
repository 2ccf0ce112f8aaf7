#include "platform/uikit/controllers/UIAlertController.h"

#include <algorithm>

#include "platform/foundation/values/Exception.h"

namespace platform {

std::shared_ptr<UIAlertAction> UIAlertAction::actionWithTitle(std::optional<std::string> title,
                                                              UIAlertActionStyle style,
                                                              Handler handler) {
  auto action = make<UIAlertAction>();
  action->_title = std::move(title);
  action->_style = style;
  action->_handler = std::move(handler);
  return action;
}

void UIAlertAction::run() {
  if (_handler) _handler(self<UIAlertAction>());
}

std::shared_ptr<UIAlertController> UIAlertController::alertControllerWithTitle(
    std::optional<std::string> title, std::optional<std::string> message,
    UIAlertControllerStyle style) {
  auto alert = make<UIAlertController>();
  alert->setTitle(std::move(title));
  alert->_message = std::move(message);
  alert->_style = style;
  return alert;
}

void UIAlertController::setMessage(std::optional<std::string> message) {
  _message = std::move(message);
  noteChange();
}

void UIAlertController::addAction(const std::shared_ptr<UIAlertAction>& action) {
  if (!action) return;
  const auto isCancel = [](const auto& other) {
    return other->style() == UIAlertActionStyle::cancel;
  };
  if (isCancel(action) && std::ranges::any_of(_actions, isCancel)) {
    throw Exception(std::string(internalInconsistencyException),
                    "UIAlertController can only have one action with a style of "
                    "UIAlertActionStyleCancel");
  }
  _actions.push_back(action);
  noteChange();
}

bool UIAlertController::userChoose(std::int64_t index) {
  if (index < 0 || index >= static_cast<std::int64_t>(_actions.size())) return false;
  if (!presentingViewController()) return false;
  const auto keptAlive = shared_from_this();
  const auto action = _actions[static_cast<std::size_t>(index)];
  dismissViewControllerAnimated(true);
  action->run();
  return true;
}

bool UIAlertController::userCancel() {
  const auto cancel = std::ranges::find_if(
      _actions, [](const auto& action) { return action->style() == UIAlertActionStyle::cancel; });
  return cancel != _actions.end() && userChoose(cancel - _actions.begin());
}

}  // namespace platform
