#include "settings/tree/ProblemPage.h"

#include <utility>

namespace settings {

std::shared_ptr<ProblemPage> ProblemPage::pageWithProblem(std::string title, std::string text) {
  auto page = platform::make<ProblemPage>();
  page->setTitle("Settings");
  page->_problem = {std::move(title), std::move(text)};
  return page;
}

}  // namespace settings
