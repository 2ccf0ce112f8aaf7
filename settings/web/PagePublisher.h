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

// Shows an application to the pages: each page gets the tree as a whole and then every difference,
// each action is answered by exactly one patch or refusal, and the panes beside the phone are sent
// when they change. All pages see the same.
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
  // A thumbnail that was wanted has been made, or the photo has turned out to be none.
  void thumbnailMade(RequestId request, std::string_view hash, ThumbnailFile made);
  // A photo that was sent has been looked at: it is kept under a name that the page is told, or the
  // page is told why it is none.
  void photoRead(RequestId request, PhotoResult photo);
  // The device's files may have changed from outside.
  void filesChanged() { _fileIsStale = true; }

  // Sends what has changed.
  void publish();

 private:
  // What is known of one page.
  struct Page {
    std::optional<std::int64_t> acknowledged;  // the last action that was answered
    std::string inspected;                     // the node whose row it wants to see
    std::string sentRow;                       // what it was last told of that row
  };
  // Who is told, in a patch, that an action was answered.
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
  std::uint64_t _shownRevision = 0;  // of the application
  // Sent before the patch that shows what they belong to.
  std::vector<std::string> _events;
  std::uint64_t _logCursor = 0;
  std::map<std::string, std::string> _sentPanes;  // by name
  bool _treeIsStale = true;
  bool _fileIsStale = true;
};

}  // namespace settings
