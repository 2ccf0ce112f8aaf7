#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/application/ApplicationObserver.h"
#include "settings/web/PageSink.h"
#include "settings/web/PatchStream.h"
#include "settings/web/SentPhotos.h"

namespace settings {

class Application;
struct ActionResult;

// Shows an application to the pages. Each page receives the whole tree first and then every
// difference. Each action is answered by exactly one patch or refusal. The panes beside the phone
// are sent when they change. All pages show the same state.
//
// Threads: the application's.
class PagePublisher : private ApplicationObserver {
 public:
  // Both must outlive the publisher.
  PagePublisher(Application& application, PageSink& sink);
  ~PagePublisher() override;
  PagePublisher(const PagePublisher&) = delete;
  PagePublisher& operator=(const PagePublisher&) = delete;

  void opened(ConnectionId connection);
  void received(ConnectionId connection, std::string_view text);
  void wantsWhole(ConnectionId connection);
  void closed(ConnectionId connection);
  void imageWanted(RequestId request, std::string_view hash);
  // Answers the request for a thumbnail, or records that the file is not a photo.
  void thumbnailMade(RequestId request, std::string_view hash, ThumbnailFile made);
  // Keeps an uploaded photo and tells the page its name; or tells the page why it is not a photo.
  void photoRead(RequestId request, PhotoResult photo);
  // The device's files may have changed from outside.
  void filesChanged() { _fileIsStale = true; }

  // Sends the changes.
  void publish();

 private:
  // The state of one page.
  struct Page {
    std::optional<std::int64_t> acknowledged;  // the last answered action
    std::string inspected;                     // the node of the inspected row
    std::string sentRow;                       // the last row message to this page
  };
  // The action that a patch answers, and its page.
  struct Answered {
    ConnectionId connection;
    std::int64_t sequence;
  };

  ActionResult performAction(const nlohmann::json& action);
  ActionResult chooseSent(const nlohmann::json& action, const std::string& name);
  void perform(ConnectionId connection, std::int64_t sequence, const nlohmann::json& action);
  void publishTree(std::optional<Answered> answered);
  void publishPatch(const nlohmann::json& patch, std::optional<Answered> answered);
  void publishSide();
  void sendRow(ConnectionId connection, Page& page);
  void sendWhole(ConnectionId connection, Page& page);
  void sendWholeSide(ConnectionId connection);
  void sendToAll(const std::vector<std::string>& texts);

  void treeChanged() override { _treeIsStale = true; }
  void announced(const std::string& text) override;
  void homeScreenRestarted() override;
  void openedURL(const std::string& url) override;
  void transitioned(TransitionKind kind, double durationSeconds) override;

  Application& _application;
  PageSink& _sink;
  std::map<ConnectionId, Page> _pages;
  PatchStream _stream;
  SentPhotos _sentPhotos;
  std::uint64_t _shownRevision = 0;  // revision of the application's tree
  // Events to send before the patch that they belong to.
  std::vector<std::string> _events;
  std::uint64_t _logCursor = 0;
  std::map<std::string, std::string> _sentPanes;  // by name
  bool _treeIsStale = true;
  bool _fileIsStale = true;
};

}  // namespace settings
