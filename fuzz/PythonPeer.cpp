#include "fuzz/PythonPeer.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fuzz/FuzzChecks.h"

extern char** environ;  // NOLINT(readability-redundant-declaration)

namespace fuzzing {

PythonPeer::PythonPeer() {
  std::array<int, 2> toPeer{};
  std::array<int, 2> fromPeer{};
  require(pipe(toPeer.data()) == 0 && pipe(fromPeer.data()) == 0, "no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, toPeer[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fromPeer[1], STDOUT_FILENO);
  for (const int end : {toPeer[0], toPeer[1], fromPeer[0], fromPeer[1]}) {
    posix_spawn_file_actions_addclose(&actions, end);
  }
  std::string name = "python3";
  std::string script = PYTHON_PEER;
  std::array<char*, 3> arguments{name.data(), script.data(), nullptr};
  require(posix_spawnp(&_process, "python3", &actions, nullptr, arguments.data(), environ) == 0,
          "python3 does not start");
  posix_spawn_file_actions_destroy(&actions);
  close(toPeer[0]);
  close(fromPeer[1]);
  _requests = toPeer[1];
  _answers = fromPeer[0];
}

PythonPeer::~PythonPeer() {
  close(_requests);  // the peer exits at the end of its input
  close(_answers);
  waitpid(_process, nullptr, 0);
}

void PythonPeer::send(const void* from, std::size_t size) const {
  const char* next = static_cast<const char*>(from);
  while (size > 0) {
    const ssize_t sent = write(_requests, next, size);
    require(sent > 0 || errno == EINTR, "the peer has ended");
    if (sent < 0) continue;
    next += sent;
    size -= static_cast<std::size_t>(sent);
  }
}

// The fuzzer's timer interrupts calls.
void PythonPeer::receive(void* to, std::size_t size) const {
  char* next = static_cast<char*>(to);
  while (size > 0) {
    const ssize_t received = ::read(_answers, next, size);
    require(received > 0 || (received < 0 && errno == EINTR), "the peer has ended");
    if (received < 0) continue;
    next += received;
    size -= static_cast<std::size_t>(received);
  }
}

std::string PythonPeer::read(std::string_view bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  const std::array<unsigned char, 4> head{
      static_cast<unsigned char>(size >> 24U), static_cast<unsigned char>(size >> 16U),
      static_cast<unsigned char>(size >> 8U), static_cast<unsigned char>(size)};
  send(head.data(), head.size());
  send(bytes.data(), bytes.size());
  std::array<unsigned char, 4> answer{};
  receive(answer.data(), answer.size());
  std::size_t length = 0;
  for (const unsigned char byte : answer) length = (length << 8U) | byte;
  std::string text(length, '\0');
  receive(text.data(), text.size());
  return text;
}

}  // namespace fuzzing
