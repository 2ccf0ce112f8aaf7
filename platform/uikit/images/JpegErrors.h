#pragma once

#include <array>
#include <csetjmp>
#include <cstdio>
#include <jpeglib.h>

namespace platform {

// How the JPEG library reports: a call that fails leaves by a jump to where the work began, with
// the reason in problem(). Nothing that needs a destructor may be made while the library works.
class JpegErrors {
 public:
  // work says what the library does, as "The JPEG cannot be read". `common` is the head of the
  // structure that the library works with; this must live as long as that.
  void install(jpeg_common_struct& common, const char* work) noexcept {
    common.err = jpeg_std_error(&_manager);
    common.client_data = this;
    _manager.error_exit = leave;
    _manager.emit_message = judge;
    _manager.output_message = [](j_common_ptr) {};
    _work = work;
  }
  // Where the jump goes to: `if (setjmp(errors.back())) return false;`
  std::jmp_buf& back() noexcept { return _back; }
  // Leaves the work for a reason of our own.
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
