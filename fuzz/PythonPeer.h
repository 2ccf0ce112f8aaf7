#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace fuzzing {

// A Python process that reads property lists with plistlib, one at a time. Ends with this object.
class PythonPeer {
 public:
  PythonPeer();
  ~PythonPeer();
  PythonPeer(const PythonPeer&) = delete;
  PythonPeer& operator=(const PythonPeer&) = delete;

  // Returns the value in the form that python_peer.py describes; empty if plistlib refuses it.
  std::string read(std::string_view bytes);

 private:
  void send(const void* from, std::size_t size) const;
  void receive(void* to, std::size_t size) const;

  int _requests = -1;
  int _answers = -1;
  int _process = -1;
};

}  // namespace fuzzing
