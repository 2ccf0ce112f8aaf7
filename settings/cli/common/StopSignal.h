#pragma once

#include <csignal>

namespace settings {

// Turns the signals that end a program (SIGINT, SIGTERM) into a descriptor that becomes readable,
// so that a command can end in order. The former handlers come back with the destructor.
//
// Threads: at most one object at a time; the descriptor may be polled from any.
class StopSignal {
 public:
  StopSignal();
  ~StopSignal();
  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  // Readable once a signal has come or `raise` was called; stays so.
  int descriptor() const noexcept { return _descriptor; }
  // As if a signal had come.
  void raise() noexcept;

 private:
  int _descriptor;
  struct sigaction _formerInterrupt {};
  struct sigaction _formerTerminate {};
};

// Waits until one of two descriptors is readable (-1: none). Gives false on a failure of the
// system.
bool waitReadable(int first, int second, bool& firstReady, bool& secondReady);

}  // namespace settings
