#pragma once

namespace zentrova {

// Restarts the home-screen process, so that it reads the settings anew: with sbreload where it is
// installed and the system is older than 15.0, else with killall. Neither waits for the program
// nor reports a failure.
// Threads: main.
void restartHomeScreen();

}  // namespace zentrova
