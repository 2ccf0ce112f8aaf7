import assert from 'node:assert/strict';
import { isDeepStrictEqual } from 'node:util';

// A machine that does ten things at once is slow, and no failure.
const usualLimitMs = 30_000;
// A look takes time from what is waited for.
const pauseMs = 10;

const pause = () => new Promise((resolve) => { setTimeout(resolve, pauseMs); });

/** Waits until the condition holds; fails with what should have held. */
export async function eventually(condition, what, limitMs = usualLimitMs) {
  const deadline = Date.now() + limitMs;
  while (!(await condition())) {
    assert.ok(Date.now() < deadline, `in time: ${what}`);
    await pause();
  }
}

/** Waits until a value is what is expected, or matches the expression; fails with what there is. */
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

/** Waits until nothing in the window moves, but for what moves without an end. */
export function still(page) {
  const stands = () => page.evaluate(() => document.getAnimations().every(({ playState, effect }) =>
    playState !== 'running' || !Number.isFinite(effect.getComputedTiming().endTime)));
  return eventually(stands, 'nothing moves');
}
