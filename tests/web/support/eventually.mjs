import assert from 'node:assert/strict';
import { isDeepStrictEqual } from 'node:util';

// Long enough for a busy machine: slowness is not a failure.
const usualLimitMs = 30_000;
// Each check takes time from the awaited work.
const pauseMs = 10;

const pause = () => new Promise((resolve) => { setTimeout(resolve, pauseMs); });

/** Waits until the condition is true; fails with `what`. */
export async function eventually(condition, what, limitMs = usualLimitMs) {
  const deadline = Date.now() + limitMs;
  while (!(await condition())) {
    assert.ok(Date.now() < deadline, `timed out waiting for: ${what}`);
    await pause();
  }
}

/** Waits until a value equals the expected one or matches the expression; fails with the actual value. */
export async function becomes(value, expected, what, limitMs = usualLimitMs) {
  const deadline = Date.now() + limitMs;
  const fits = (now) => (expected instanceof RegExp ? expected.test(now) : isDeepStrictEqual(now, expected));
  let now = await value();
  while (!fits(now) && Date.now() < deadline) {
    await pause();
    now = await value();
  }
  if (expected instanceof RegExp) assert.match(now, expected, what);
  else assert.deepEqual(now, expected, what);
}

/** Waits until all animations in the window have ended, except for endless ones. */
export function still(page) {
  const stands = () => page.evaluate(() => document.getAnimations().every(({ playState, effect }) =>
    playState !== 'running' || !Number.isFinite(effect.getComputedTiming().endTime)));
  return eventually(stands, 'nothing moves');
}
