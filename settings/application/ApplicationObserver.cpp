#include "settings/application/ApplicationObserver.h"

namespace settings {

const char* transitionName(TransitionKind kind) {
  switch (kind) {
    case TransitionKind::push:
      return "push";
    case TransitionKind::pop:
      return "pop";
    case TransitionKind::present:
      return "present";
    case TransitionKind::dismiss:
      return "dismiss";
    case TransitionKind::crossDissolve:
      return "crossDissolve";
  }
  return "push";
}

}  // namespace settings
