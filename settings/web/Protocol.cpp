#include "settings/web/Protocol.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "settings/device/JsonText.h"

namespace settings {
namespace {

using nlohmann::json;

// Deeper than any action. Limited because copying and comparing a value use one stack frame per
// level.
constexpr int deepestMessage = 8;

ClientMessage bad(std::string problem, std::optional<std::int64_t> sequence = std::nullopt) {
  ClientMessage message;
  message.sequence = sequence;
  message.problem = std::move(problem);
  return message;
}

json parseBounded(std::string_view text, bool& tooDeep) {
  const auto visit = [&](int depth, json::parse_event_t, json&) {
    tooDeep = tooDeep || depth > deepestMessage;
    return !tooDeep;
  };
  return json::parse(text, visit, false);
}

std::optional<std::int64_t> readSequence(const json& message) {
  const auto found = message.find("sequence");
  if (found == message.end() || !found->is_number_integer()) return std::nullopt;
  return found->get<std::int64_t>();
}

std::string readText(const json& message, const char* member) {
  const auto found = message.find(member);
  return found != message.end() && found->is_string() ? found->get<std::string>() : std::string();
}

ClientMessage readAction(const json& message) {
  const auto sequence = readSequence(message);
  if (!sequence) return bad("an action needs \"sequence\", a whole number");
  if (readText(message, "action").empty())
    return bad("an action needs \"action\", a name", sequence);
  return {ClientMessageKind::action, sequence, {}, {}};
}

ClientMessage readInspection(const json& message) {
  const std::string node = readText(message, "node");
  if (node.empty()) return bad("an inspection needs \"node\", the key of a row");
  return {ClientMessageKind::inspect, std::nullopt, node, {}};
}

void acknowledge(json& message, std::optional<std::int64_t> sequence) {
  if (sequence) message["ack"] = *sequence;
}

}  // namespace

ClientMessage parseClientMessage(std::string_view text, json& fields) {
  bool tooDeep = false;
  json message = parseBounded(text, tooDeep);
  if (tooDeep) return bad("a message must not be nested more than 8 levels deep");
  if (!message.is_object()) return bad("a message must be a JSON object");
  const std::string type = readText(message, "type");
  ClientMessage result;
  if (type == "action") {
    result = readAction(message);
  } else if (type == "inspect") {
    result = readInspection(message);
  } else if (type == "resync") {
    result.kind = ClientMessageKind::resync;
  } else {
    result = bad(R"("type" must be "action", "inspect" or "resync")", readSequence(message));
  }
  if (result.kind != ClientMessageKind::bad) fields = std::move(message);
  return result;
}

std::string treeMessage(std::uint64_t revision, const json& tree,
                        std::optional<std::int64_t> acknowledged) {
  json message = {{"type", "tree"}, {"revision", revision}, {"tree", tree}};
  acknowledge(message, acknowledged);
  return jsonText(message);
}

std::string patchMessage(std::uint64_t revision, const json& patch,
                         std::optional<std::int64_t> acknowledged) {
  json message = {
      {"type", "patch"}, {"revision", revision}, {"base", revision - 1}, {"patch", patch}};
  acknowledge(message, acknowledged);
  return jsonText(message);
}

std::string announcementMessage(std::string_view text) {
  return jsonText(json{{"type", "event"}, {"event", "announce"}, {"text", text}});
}

std::string homeScreenRestartedMessage() {
  return jsonText(json{{"type", "event"}, {"event", "homeScreenRestarted"}});
}

std::string openURLMessage(std::string_view url) {
  return jsonText(json{{"type", "event"}, {"event", "openURL"}, {"url", url}});
}

std::string transitionMessage(std::string_view kind, double durationSeconds) {
  return jsonText(json{
      {"type", "event"}, {"event", "transition"}, {"kind", kind}, {"duration", durationSeconds}});
}

std::string sideMessage(json members) {
  members["type"] = "side";
  return jsonText(members);
}

std::string refusedMessage(std::optional<std::int64_t> sequence, std::string_view message) {
  json refused = {{"type", "refused"}, {"message", message}};
  acknowledge(refused, sequence);
  return jsonText(refused);
}

}  // namespace settings
