#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "settings/application/PhotoLibrary.h"

namespace settings {

// Looks at photos that the pages send, one after the other on a thread of its own: to unpack a
// large one takes longer than a page may be kept waiting.
//
// Threads: any.
class PhotoReader {
 public:
  // Called on the reader's thread.
  using Done = std::function<void(PhotoResult)>;

  PhotoReader();
  // Waits for the photo that is in hand; those behind it are dropped without a word.
  ~PhotoReader();
  PhotoReader(const PhotoReader&) = delete;
  PhotoReader& operator=(const PhotoReader&) = delete;

  // The bytes of a file that may hold anything.
  void read(std::string bytes, Done done);

 private:
  struct Work {
    std::string bytes;
    Done done;
  };
  void run();

  std::mutex _mutex;
  std::condition_variable _changed;
  std::deque<Work> _work;
  bool _stopped = false;
  std::thread _thread;
};

}  // namespace settings
