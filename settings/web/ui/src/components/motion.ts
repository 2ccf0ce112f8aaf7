// Movement, where the user wants it.

export function motionAllowed(): boolean {
  return !matchMedia('(prefers-reduced-motion: reduce)').matches;
}

export const pushEasing = 'cubic-bezier(0.22, 0.9, 0.24, 1)';
export const rowEasing = 'cubic-bezier(0.3, 0.1, 0.2, 1)';

/** Animates from the given look to the present one, or not at all where motion is not wanted. */
export function animate(element: Element, frames: Keyframe[], durationMs: number, easing: string): Animation | undefined {
  if (!motionAllowed()) return undefined;
  return element.animate(frames, { duration: durationMs, easing });
}

/** Animates something that is leaving, and takes it out of the document afterwards. */
export function animateAway(element: Element, frames: Keyframe[], durationMs: number, easing: string): void {
  const animation = animate(element, frames, durationMs, easing);
  if (!animation) return element.remove();
  const remove = (): void => element.remove();
  animation.onfinish = remove;
  animation.oncancel = remove;
}
