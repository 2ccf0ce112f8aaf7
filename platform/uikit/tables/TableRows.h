#pragma once

#include "platform/uikit/tables/UITableView.h"

// What the parts of UITableView's implementation share.
namespace platform {

// True as long as the scope lives.
class FlagWhile {
 public:
  explicit FlagWhile(bool& flag) noexcept : _flag(flag) { _flag = true; }
  ~FlagWhile() { _flag = false; }
  FlagWhile(const FlagWhile&) = delete;
  FlagWhile& operator=(const FlagWhile&) = delete;

 private:
  bool& _flag;
};

// The function gets each row with its index path and must not change which rows there are.
template <class F>
void UITableView::forEachRow(F function) {
  auto& sections = _model.sections();
  for (std::size_t section = 0; section < sections.size(); ++section) {
    auto& rows = sections[section].rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
      function(rows[row],
               IndexPath{static_cast<std::int64_t>(section), static_cast<std::int64_t>(row)});
    }
  }
}

}  // namespace platform
