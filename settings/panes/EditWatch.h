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

// Compares a table before and after the user moved, inserted or deleted a row. A page does not
// report when it rejects such an edit: the row just returns to its place. Threads: the
// application's.
class EditWatch {
 public:
  // Watches nothing if the action is not an edit of a row. `target` may be null. `title` is the
  // title of the row; the table does not have it for a row that is out of sight.
  EditWatch(const nlohmann::json& action, const NodeTarget* target, std::string title);

  // What happened to the row, as text for a screen reader; empty if nothing is watched.
  std::optional<std::string> outcome() const;

 private:
  std::vector<std::vector<std::uint64_t>> rows() const;

  std::shared_ptr<platform::UITableView> _table;
  std::uint64_t _row = 0;
  std::string _title;
  std::vector<std::vector<std::uint64_t>> _before;
};

}  // namespace settings
