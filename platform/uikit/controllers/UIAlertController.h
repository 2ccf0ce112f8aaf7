#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/uikit/controllers/UIViewController.h"

namespace platform {

enum class UIAlertActionStyle : std::uint8_t { standard = 0, cancel = 1, destructive = 2 };
enum class UIAlertControllerStyle : std::uint8_t { actionSheet = 0, alert = 1 };

// A choice in an alert. Threads: main.
class UIAlertAction : public Object {
  PLATFORM_CLASS(UIAlertAction)

 public:
  using Handler = std::function<void(const std::shared_ptr<UIAlertAction>&)>;

  static std::shared_ptr<UIAlertAction> actionWithTitle(std::optional<std::string> title,
                                                        UIAlertActionStyle style, Handler handler);

  const std::optional<std::string>& title() const noexcept { return _title; }
  UIAlertActionStyle style() const noexcept { return _style; }
  // Calls the handler, if any.
  void run();

 private:
  std::optional<std::string> _title;
  UIAlertActionStyle _style = UIAlertActionStyle::standard;
  Handler _handler;
};

// An alert over a page. Threads: main.
class UIAlertController : public UIViewController {
  PLATFORM_CLASS(UIAlertController)

 public:
  static std::shared_ptr<UIAlertController> alertControllerWithTitle(
      std::optional<std::string> title, std::optional<std::string> message,
      UIAlertControllerStyle style);

  const std::optional<std::string>& message() const noexcept { return _message; }
  void setMessage(std::optional<std::string> message);
  UIAlertControllerStyle preferredStyle() const noexcept { return _style; }
  // Actions keep the order in which they were added. Ignores an empty pointer. As on the platform,
  // a second cancel action raises NSInternalInconsistencyException.
  void addAction(const std::shared_ptr<UIAlertAction>& action);
  const std::vector<std::shared_ptr<UIAlertAction>>& actions() const noexcept { return _actions; }

  // User input: dismisses the alert, then runs the action's handler. Returns false if there is no
  // such action or the alert is not shown.
  bool userChoose(std::int64_t index);
  // User input: closes the alert with the cancel action. Returns false and keeps the alert if there
  // is none.
  bool userCancel();

 private:
  std::optional<std::string> _message;
  UIAlertControllerStyle _style = UIAlertControllerStyle::actionSheet;
  std::vector<std::shared_ptr<UIAlertAction>> _actions;
};

}  // namespace platform
