#pragma once

#include <string>

namespace zentrova {

// Where the jailbreak's file tree really lives: the destination of the link "/var/jb", as it
// stands there; "/" where "/var/jb" is missing, is no link, or leads to "/jb". Found out on the
// first call and kept for the life of the current process.
// Threads: any.
const std::string& getRootPath();

}  // namespace zentrova
