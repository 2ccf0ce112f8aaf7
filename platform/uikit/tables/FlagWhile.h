#pragma once

namespace platform {

// Sets a flag until the end of the scope.
class FlagWhile {
 public:
  explicit FlagWhile(bool& flag) noexcept : _flag(flag) { _flag = true; }
  ~FlagWhile() { _flag = false; }
  FlagWhile(const FlagWhile&) = delete;
  FlagWhile& operator=(const FlagWhile&) = delete;

 private:
  bool& _flag;
};

}  // namespace platform
