#include "platform/foundation/programs/NSPipe.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace platform {

bool NSPipe::init() {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return false;
  _reading = make(&NSFileHandle::initWithFileDescriptor, ends[0]);
  _writing = make(&NSFileHandle::initWithFileDescriptor, ends[1]);
  return true;
}

}  // namespace platform
