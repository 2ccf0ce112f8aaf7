#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// A message of the page, as docs/tree.md says.
enum class ClientMessageKind {
  action,
  inspect,
  resync,
  bad,  // cannot be understood; `problem` says why
};

struct ClientMessage {
  ClientMessageKind kind = ClientMessageKind::bad;
  std::optional<std::int64_t> sequence;  // of an action; of a bad message where it could be read
  std::string node;                      // of an inspection
  std::string problem;
};

// Reads a message. Never raises, whatever the text holds. `fields` takes the members of an action
// or an inspection; it is left as it was for a bad message.
ClientMessage parseClientMessage(std::string_view text, nlohmann::json& fields);

// The server's messages as texts, always valid UTF-8: what a string of the tree holds beside that
// (a lone surrogate) is shown as U+FFFD.
std::string treeMessage(std::uint64_t revision, const nlohmann::json& tree,
                        std::optional<std::int64_t> acknowledged);
std::string patchMessage(std::uint64_t revision, const nlohmann::json& patch,
                         std::optional<std::int64_t> acknowledged);
std::string announcementMessage(std::string_view text);
std::string homeScreenRestartedMessage();
std::string openURLMessage(std::string_view url);
std::string transitionMessage(std::string_view kind, double durationSeconds);
// `members` holds those panes that changed.
std::string sideMessage(nlohmann::json members);
// Without a sequence where the refused message had none that could be read.
std::string refusedMessage(std::optional<std::int64_t> sequence, std::string_view message);

}  // namespace settings
