#pragma once

#include <string>

namespace zentrova {

// Where the jailbreak's file tree is: the destination of the link "/var/jb", unresolved. "/" if
// "/var/jb" is missing, is not a link, or points to "/jb". Looked up on the first call and cached
// for the life of the current process.
// Threads: any.
const std::string& getRootPath();

}  // namespace zentrova
