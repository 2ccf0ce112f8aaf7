#include "settings/web/PagePublisher.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "settings/application/Application.h"
#include "settings/device/JsonText.h"
#include "settings/panes/SidePanes.h"
#include "settings/tree/ActionMembers.h"
#include "settings/web/Protocol.h"

namespace settings {
namespace {

using nlohmann::json;

OutgoingMessage outgoing(std::string text) {
  return {std::make_shared<const std::string>(std::move(text)), false};
}

}  // namespace

PagePublisher::PagePublisher(Application& application, PageSink& sink)
    : _application(application), _sink(sink) {
  _application.addObserver(this);
}

PagePublisher::~PagePublisher() {
  _application.removeObserver(this);
}

void PagePublisher::opened(ConnectionId connection) {
  // Messages that are pending for the other pages must not reach the new page in addition to the
  // whole tree.
  publish();
  Page& page = _pages[connection];
  sendWhole(connection, page);
  sendWholeSide(connection);
}

void PagePublisher::closed(ConnectionId connection) {
  _pages.erase(connection);
}

void PagePublisher::wantsWhole(ConnectionId connection) {
  const auto page = _pages.find(connection);
  if (page == _pages.end()) return;
  publish();
  sendWhole(connection, page->second);
  sendWholeSide(connection);
}

void PagePublisher::received(ConnectionId connection, std::string_view text) {
  _sink.handled(connection);
  const auto page = _pages.find(connection);
  if (page == _pages.end()) return;
  json fields;
  const ClientMessage message = parseClientMessage(text, fields);
  switch (message.kind) {
    case ClientMessageKind::action:
      perform(connection, *message.sequence, fields);
      break;
    case ClientMessageKind::inspect:
      page->second.inspected = message.node;
      page->second.sentRow.clear();
      sendRow(connection, page->second);
      break;
    case ClientMessageKind::resync:
      publishTree(std::nullopt);
      sendWhole(connection, page->second);
      break;
    case ClientMessageKind::bad:
      _sink.send(connection, outgoing(refusedMessage(message.sequence, message.problem)));
      break;
  }
}

void PagePublisher::imageWanted(RequestId request, std::string_view hash) {
  auto bytes = _application.imageBytes(hash);
  _sink.answerImage(request,
                    bytes ? std::make_shared<const std::string>(*std::move(bytes)) : nullptr);
}

void PagePublisher::thumbnailMade(RequestId request, std::string_view hash, ThumbnailFile made) {
  if (!made.problem.empty()) _application.noteThumbnailProblem(hash, made.problem);
  const bool isMade = !made.bytes.empty();
  _sink.answerImage(request,
                    isMade ? std::make_shared<const std::string>(std::move(made.bytes)) : nullptr);
}

void PagePublisher::photoRead(RequestId request, PhotoResult photo) {
  if (photo.image) {
    const std::string name = _sentPhotos.keep(std::move(photo));
    _sink.answerPhoto(request, 200, jsonText(json{{"name", name}}));
  } else {
    _sink.answerPhoto(request, 422, jsonText(json{{"message", photo.problem}}));
  }
}

void PagePublisher::publish() {
  publishTree(std::nullopt);
  publishSide();
}

ActionResult PagePublisher::performAction(const json& action) {
  const auto name = stringMember(action, "name");
  const bool isSent =
      stringMember(action, "action") == "photo" && name && SentPhotos::isName(*name);
  return isSent ? chooseSent(action, *name) : _application.perform(action);
}

ActionResult PagePublisher::chooseSent(const json& action, const std::string& name) {
  const auto photo = _sentPhotos.find(name);
  if (!photo) return refused("The picture is no longer available. Send it again.");
  ActionResult result = _application.choosePhoto(stringMember(action, "node").value_or(""), *photo);
  if (result) _sentPhotos.drop(name);
  return result;
}

void PagePublisher::perform(ConnectionId connection, std::int64_t sequence, const json& action) {
  const ActionResult result = performAction(action);
  _fileIsStale = true;
  // The page may have disconnected while the action waited for a program.
  const auto page = _pages.find(connection);
  if (page == _pages.end()) return;
  page->second.acknowledged = sequence;
  if (result) {
    publishTree(Answered{connection, sequence});
  } else {
    _sink.send(connection, outgoing(refusedMessage(sequence, result.message)));
  }
}

void PagePublisher::publishTree(std::optional<Answered> answered) {
  if (!_treeIsStale && !answered) return;
  _treeIsStale = false;
  const std::uint64_t revision = _application.revision();
  sendToAll(std::exchange(_events, {}));
  if (revision != _shownRevision || answered || _stream.revision() == 0) {
    _shownRevision = revision;
    publishPatch(_stream.advance(_application.tree()), answered);
    _fileIsStale = true;
  }
}

void PagePublisher::publishPatch(const json& patch, std::optional<Answered> answered) {
  if (_pages.empty()) return;
  const OutgoingMessage plain = outgoing(patchMessage(_stream.revision(), patch, std::nullopt));
  for (const auto& [connection, page] : _pages) {
    if (answered && answered->connection == connection) {
      _sink.send(connection, outgoing(patchMessage(_stream.revision(), patch, answered->sequence)));
    } else {
      _sink.send(connection, plain);
    }
  }
}

void PagePublisher::publishSide() {
  json members = json::object();
  const bool fileIsStale = std::exchange(_fileIsStale, false);
  for (const SidePane& pane : _application.sidePanes()) {
    // A file may be large: it is read only if it can have changed.
    if (pane.source == SidePane::Source::files && !fileIsStale) continue;
    json content = pane.content();
    std::string text = jsonText(content);
    if (text == _sentPanes[pane.name]) continue;
    _sentPanes[pane.name] = std::move(text);
    members[pane.name] = std::move(content);
  }
  json log = _application.logSince(_logCursor);
  if (!log.empty()) members["log"] = std::move(log);
  if (!members.empty()) sendToAll({sideMessage(std::move(members))});
  for (auto& [connection, page] : _pages) sendRow(connection, page);
}

void PagePublisher::sendRow(ConnectionId connection, Page& page) {
  if (page.inspected.empty()) return;
  json row = _application.inspectRow(page.inspected);
  if (row.is_null()) {
    row = {{"node", page.inspected}, {"properties", json::object()}};
  }
  std::string text = sideMessage({{"row", std::move(row)}});
  if (text == page.sentRow) return;
  page.sentRow = text;
  _sink.send(connection, outgoing(std::move(text)));
}

void PagePublisher::sendWhole(ConnectionId connection, Page& page) {
  std::string text = treeMessage(_stream.revision(), _stream.shown(), page.acknowledged);
  _sink.send(connection, {std::make_shared<const std::string>(std::move(text)), true});
}

void PagePublisher::sendWholeSide(ConnectionId connection) {
  std::uint64_t cursor = 0;
  json members = {{"log", _application.logSince(cursor)}, {"logFromStart", true}};
  for (const SidePane& pane : _application.sidePanes()) members[pane.name] = pane.content();
  _sink.send(connection, outgoing(sideMessage(std::move(members))));
}

void PagePublisher::sendToAll(const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    const OutgoingMessage message = outgoing(text);
    for (const auto& [connection, page] : _pages) _sink.send(connection, message);
  }
}

void PagePublisher::announced(const std::string& text) {
  _events.push_back(announcementMessage(text));
  _treeIsStale = true;
}

void PagePublisher::homeScreenRestarted() {
  _events.push_back(homeScreenRestartedMessage());
  _treeIsStale = true;
}

void PagePublisher::openedURL(const std::string& url) {
  _events.push_back(openURLMessage(url));
  _treeIsStale = true;
}

void PagePublisher::transitioned(TransitionKind kind, double durationSeconds) {
  _events.push_back(transitionMessage(transitionName(kind), durationSeconds));
  _treeIsStale = true;
}

}  // namespace settings
