import assert from 'node:assert/strict';

const usualLimitMs = 10_000;

/** Waits until the condition holds; fails with what should have held. */
export async function eventually(condition, what, limitMs = usualLimitMs) {
  const deadline = Date.now() + limitMs;
  while (!(await condition())) {
    assert.ok(Date.now() < deadline, `in time: ${what}`);
    await new Promise((resolve) => setImmediate(resolve));
  }
}
