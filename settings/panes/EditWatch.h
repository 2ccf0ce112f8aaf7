#pragma once

#include <cstdint>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

namespace platform {
class UITableView;
}

namespace settings {

struct NodeTarget;

// Looks at a table before and after the user has moved, inserted or deleted a row, since the page
// says nothing where it refuses: the row just goes back. Threads: the application's.
class EditWatch {
 public:
  // Watches nothing where the action is no edit of a row. `target` may be null. `title` is what the
  // row is called; the table itself does not know it of a row that is out of sight.
  EditWatch(const nlohmann::json& action, const NodeTarget* target, std::string title);

  // What has become of the row, for a screen reader; nothing where nothing was watched.
  std::optional<std::string> outcome() const;

 private:
  std::vector<std::vector<std::uint64_t>> rows() const;

  std::shared_ptr<platform::UITableView> _table;
  std::uint64_t _row = 0;
  std::string _title;
  std::vector<std::vector<std::uint64_t>> _before;
};

}  // namespace settings
