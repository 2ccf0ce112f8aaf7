#pragma once

#include <csignal>

namespace settings {

// Turns the signals that end a program (SIGINT, SIGTERM) into a readable descriptor, so that a
// command can end in order. The signals are blocked during its lifetime, in the thread that creates
// it and in threads that are started later.
//
// Threads: one, which must create it before it starts other threads and destroy it after they have
// ended.
class StopSignal {
 public:
  StopSignal();
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  // Becomes readable when a signal arrives, and stays readable.
  int descriptor() const noexcept { return _descriptor; }

 private:
  sigset_t _former{};
  int _descriptor;
};

}  // namespace settings
