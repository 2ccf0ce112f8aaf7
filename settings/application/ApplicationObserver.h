#pragma once

#include <string>

namespace settings {

enum class TransitionKind { push, pop, present, dismiss, crossDissolve };

// The name that presenters use: "push", "crossDissolve".
const char* transitionName(TransitionKind kind);

// Told of what happens in the Settings application. Called on the thread that uses the
// application, in the middle of what it does: an observer takes note and returns; it must not call
// the application back.
class ApplicationObserver {
 public:
  virtual ~ApplicationObserver() = default;
  // What is shown may have changed. Told often; ask `Application::tree` when there is time.
  virtual void treeChanged() {}
  // Something that a screen reader should say.
  virtual void announced(const std::string& text) { (void)text; }
  // The program that restarts the home screen was started and ended well.
  virtual void homeScreenRestarted() {}
  // The user lets a web address (http or https) out of the application. It need not be harmless:
  // show it, and open it only where the user asks for that.
  virtual void openedURL(const std::string& url) { (void)url; }
  virtual void transitioned(TransitionKind kind, double durationSeconds) {
    (void)kind;
    (void)durationSeconds;
  }
};

}  // namespace settings
