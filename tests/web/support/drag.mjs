// The mouse as a hand that drags.

/** Where the middle of an element is in the window. */
export async function middle(locator) {
  const box = await locator.boundingBox();
  return { x: box.x + box.width / 2, y: box.y + box.height / 2, height: box.height };
}

/** Drags a handle, in steps as a hand does, to the height of another element or by a number of points. */
export async function drag(page, handle, goal, { release = true } = {}) {
  const from = await middle(handle);
  const to = typeof goal === 'number' ? { y: from.y + goal } : await middle(goal);
  await page.mouse.move(from.x, from.y);
  await page.mouse.down();
  await page.mouse.move(from.x, to.y, { steps: 12 });
  if (release) await page.mouse.up();
}
