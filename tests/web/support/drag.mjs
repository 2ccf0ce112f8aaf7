// Drags with the mouse or a finger, like a user's hand.

import { still } from './eventually.mjs';

const steps = 12;

/** The middle of an element in the window. */
export async function middle(locator) {
  const box = await locator.boundingBox();
  return { x: box.x + box.width / 2, y: box.y + box.height / 2, height: box.height };
}

// A row that still moves would not be where the pointer goes.
async function aim(page, handle, goal) {
  await still(page);
  const from = await middle(handle);
  const to = typeof goal === 'number' ? { y: from.y + goal } : await middle(goal);
  return { x: from.x, from: from.y, to: to.y };
}

/**
 * Drags a handle, in steps like a hand, to the height of another element or by a number of points.
 * Drops it when `over` has happened, which is what the user waits for while dragging.
 */
export async function drag(page, handle, goal, { release = true, over = () => undefined } = {}) {
  const { x, from, to } = await aim(page, handle, goal);
  await page.mouse.move(x, from);
  await page.mouse.down();
  await page.mouse.move(x, to, { steps });
  await over();
  if (release) await page.mouse.up();
}

/** A finger on the screen. */
export async function finger(page) {
  const session = await page.context().newCDPSession(page);
  const touch = (type, ...touchPoints) => session.send('Input.dispatchTouchEvent', { type, touchPoints });
  return {
    down: ({ x, y }) => touch('touchStart', { x, y }),
    move: ({ x, y }) => touch('touchMove', { x, y }),
    up: () => touch('touchEnd'),
  };
}

/** The same as `drag`, with a finger. */
export async function dragByFinger(page, handle, goal, { over = () => undefined } = {}) {
  const { x, from, to } = await aim(page, handle, goal);
  const hand = await finger(page);
  await hand.down({ x, y: from });
  for (let step = 1; step <= steps; step += 1) await hand.move({ x, y: from + ((to - from) * step) / steps });
  await over();
  await hand.up();
}
