#pragma once

#include <memory>
#include <string>

#include "platform/preferences/PSListController.h"
#include "platform/uikit/controllers/UIViewController.h"

namespace settings {

// Stands in for a page that could not be made, and says why. Threads: main.
class ProblemPage final : public platform::UIViewController {
  PLATFORM_CLASS(ProblemPage)

 public:
  static std::shared_ptr<ProblemPage> pageWithProblem(std::string title, std::string text);

  const platform::PSPageProblem& problem() const noexcept { return _problem; }

 private:
  platform::PSPageProblem _problem;
};

}  // namespace settings
