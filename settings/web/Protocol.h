#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace settings {

// A message of the page, in the form of docs/tree.md.
enum class ClientMessageKind {
  action,
  inspect,
  resync,
  bad,  // invalid; `problem` says why
};

struct ClientMessage {
  ClientMessageKind kind = ClientMessageKind::bad;
  std::optional<std::int64_t> sequence;  // of an action; of a bad message if it could be read
  std::string node;                      // of an inspection
  std::string problem;
};

// Parses a message. Never raises, whatever the text contains. Moves the members of an action or an
// inspection into `fields`; does not change `fields` for a bad message.
ClientMessage parseClientMessage(std::string_view text, nlohmann::json& fields);

// Builds the server's messages as text. The result is always valid UTF-8: lone surrogates in the
// tree become U+FFFD.
std::string treeMessage(std::uint64_t revision, const nlohmann::json& tree,
                        std::optional<std::int64_t> acknowledged);
std::string patchMessage(std::uint64_t revision, const nlohmann::json& patch,
                         std::optional<std::int64_t> acknowledged);
std::string announcementMessage(std::string_view text);
std::string homeScreenRestartedMessage();
std::string openURLMessage(std::string_view url);
std::string transitionMessage(std::string_view kind, double durationSeconds);
// `members` contains the panes that changed.
std::string sideMessage(nlohmann::json members);
// Without a sequence if the refused message has none that could be read.
std::string refusedMessage(std::optional<std::int64_t> sequence, std::string_view message);

}  // namespace settings
