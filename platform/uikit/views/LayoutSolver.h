#pragma once

namespace platform {

class UIView;

// Gives the descendants of the view that do not translate their autoresizing mask the frames that
// the active constraints within the view determine, with the sizes that their contents ask for
// where the constraints leave them open. What stays undetermined keeps its frame; of constraints
// that contradict each other the ones activated first win.
void solveConstraints(UIView& holder);

}  // namespace platform
