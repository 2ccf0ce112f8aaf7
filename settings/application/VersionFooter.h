#pragma once

#include <memory>
#include <optional>
#include <string>

namespace platform {
class UILabel;
class UITableView;
class UIView;
class UIViewController;
}  // namespace platform

namespace settings {

// The label in which a page of the bundle shows the product's version: it has a value
// "_versionLabel" and makes none itself. Stands below the rows of the page's table while the page
// has put a text there; an answer without any text is said to be one. Threads: main.
class VersionFooter {
 public:
  VersionFooter();
  ~VersionFooter();
  VersionFooter(const VersionFooter&) = delete;
  VersionFooter& operator=(const VersionFooter&) = delete;

  // Gives the page a label where it has such a value. The page before keeps its label, but it is no
  // longer looked after. An empty pointer lets go of everything.
  void give(const std::shared_ptr<platform::UIViewController>& page);
  // Makes room for what the page has put into its label, and scrolls to it where that is new. A
  // page with a footer of its own is left alone. True where something changed.
  bool fit();

 private:
  std::shared_ptr<platform::UITableView> table() const;
  void place(platform::UITableView& table);

  std::weak_ptr<platform::UIViewController> _page;
  std::shared_ptr<platform::UILabel> _label;  // the page's
  std::shared_ptr<platform::UILabel> _note;   // for an answer without a text
  std::shared_ptr<platform::UIView> _footer;
  std::optional<std::string> _shownText;
  double _shownWidth = 0;
};

}  // namespace settings
