#pragma once

#include <array>
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

namespace platform {

// Error handling for the JPEG library: a failing call jumps back to the start of the work, with the
// reason in problem(). While the library runs, do not create objects with destructors.
class JpegErrors {
 public:
  // `work` is the start of the message, such as "The JPEG cannot be read". `common` is the head of
  // the library's structure; this object must live as long as it.
  void install(jpeg_common_struct& common, const char* work) noexcept {
    common.err = jpeg_std_error(&_manager);
    common.client_data = this;
    _manager.error_exit = leave;
    _manager.emit_message = judge;
    _manager.output_message = [](j_common_ptr) {};
    _work = work;
  }
  // The target of the jump: `if (setjmp(errors.back())) return false;`
  std::jmp_buf& back() noexcept { return _back; }
  // Aborts the work with a reason of the caller.
  [[noreturn]] static void leaveBecause(j_common_ptr common, const char* reason) noexcept {
    JpegErrors& errors = *static_cast<JpegErrors*>(common->client_data);
    static_cast<void>(std::snprintf(errors._problem.data(), errors._problem.size(), "%s: %s.",
                                    errors._work, reason));
    std::longjmp(errors._back, 1);
  }
  const char* problem() const noexcept { return _problem.data(); }

 private:
  [[noreturn]] static void leave(j_common_ptr common);
  static void judge(j_common_ptr common, int level);

  jpeg_error_mgr _manager{};
  std::jmp_buf _back{};
  const char* _work = "";
  std::array<char, 40 + JMSG_LENGTH_MAX> _problem{};
};

}  // namespace platform
