#pragma once

namespace zentrova {

// Restarts the home screen, so that it rereads the settings. Uses sbreload if it is installed and
// the system is older than 15.0, otherwise killall. Does not wait for the program and reports no
// failure.
// Threads: main.
void restartHomeScreen();

}  // namespace zentrova
