#pragma once

namespace platform {

class UIView;

// Computes the frames of the view's descendants that do not translate their autoresizing mask, from
// the active constraints within the view. Sizes that the constraints leave open are intrinsic
// sizes. Undetermined values keep the current frame. If constraints conflict, those activated first
// win.
void solveConstraints(UIView& holder);

}  // namespace platform
