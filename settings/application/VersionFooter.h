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

// The label in which a page of the bundle shows the product's version. The page has a value
// "_versionLabel" but does not create the label itself. The label is below the rows of the page's
// table while the page has set a text; a text without visible characters is replaced by a note.
// Threads: main.
class VersionFooter {
 public:
  VersionFooter();
  ~VersionFooter();
  VersionFooter(const VersionFooter&) = delete;
  VersionFooter& operator=(const VersionFooter&) = delete;

  // Gives the page a label if it has such a value. The previous page keeps its label, but the
  // footer no longer updates it. An empty pointer releases everything.
  void give(const std::shared_ptr<platform::UIViewController>& page);
  // Makes room for the text that the page has set, and scrolls to it if it is new. Does not touch a
  // page with a footer of its own. Returns whether something changed.
  bool fit();

 private:
  std::shared_ptr<platform::UITableView> table() const;
  void place(platform::UITableView& table);

  std::weak_ptr<platform::UIViewController> _page;
  std::shared_ptr<platform::UILabel> _label;  // the page's
  std::shared_ptr<platform::UILabel> _note;   // for an empty answer
  std::shared_ptr<platform::UIView> _footer;
  std::optional<std::string> _shownText;
  double _shownWidth = 0;
};

}  // namespace settings
