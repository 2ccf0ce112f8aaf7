#pragma once

#include <csignal>

namespace settings {

// Turns the signals that end a program (SIGINT, SIGTERM) into a descriptor that becomes readable,
// so that a command can end in order. They are blocked as long as this lives, in the thread that
// makes it and in those that are started from then on.
//
// Threads: made and destroyed by one, before others are started and after they have ended.
class StopSignal {
 public:
  StopSignal();
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  // Readable once a signal has come; stays so.
  int descriptor() const noexcept { return _descriptor; }

 private:
  sigset_t _former{};
  int _descriptor;
};

}  // namespace settings
