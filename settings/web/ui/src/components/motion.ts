// Animations, which respect the user's wish for reduced motion.

export function motionAllowed(): boolean {
  return !matchMedia('(prefers-reduced-motion: reduce)').matches;
}

export const pushEasing = 'cubic-bezier(0.22, 0.9, 0.24, 1)';
export const rowEasing = 'cubic-bezier(0.3, 0.1, 0.2, 1)';

/** Animates from the given look to the current one, unless the user prefers reduced motion. */
export function animate(element: Element, frames: Keyframe[], durationMs: number, easing: string): Animation | undefined {
  if (!motionAllowed()) return undefined;
  return element.animate(frames, { duration: durationMs, easing });
}

/** Animates an element that leaves, then removes it from the document. */
export function animateAway(element: Element, frames: Keyframe[], durationMs: number, easing: string): void {
  const animation = animate(element, frames, durationMs, easing);
  if (!animation) return element.remove();
  const remove = (): void => element.remove();
  animation.onfinish = remove;
  animation.oncancel = remove;
}
