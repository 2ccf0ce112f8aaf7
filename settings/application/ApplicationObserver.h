#pragma once

#include <string>

namespace settings {

enum class TransitionKind { push, pop, present, dismiss, crossDissolve };

// The name for presenters: "push", "crossDissolve".
const char* transitionName(TransitionKind kind);

// Is notified of events in the Settings application. Called on the application's thread in the
// middle of its work: an observer must only take note and return; it must not call the application.
class ApplicationObserver {
 public:
  virtual ~ApplicationObserver() = default;
  // What is shown may have changed. Called often: read `Application::tree` later.
  virtual void treeChanged() {}
  // A text for a screen reader to announce.
  virtual void announced(const std::string& text) { (void)text; }
  // The program that restarts the home screen has run successfully.
  virtual void homeScreenRestarted() {}
  // The user agreed to open a web address (http or https) outside of the application. The address
  // is not trusted: show it, and open it only if the user asks for it.
  virtual void openedURL(const std::string& url) { (void)url; }
  virtual void transitioned(TransitionKind kind, double durationSeconds) {
    (void)kind;
    (void)durationSeconds;
  }
};

}  // namespace settings
