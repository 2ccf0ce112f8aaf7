// The rules of axe-core on a page, in the page's own world: its policy lets no script in.

import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';

const source = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

const worst = ['serious', 'critical'];
export const anyImpact = ['minor', 'moderate', ...worst];

/** Nothing of these impacts, as axe-core counts them, may be found. */
export async function assertAccessible(page, what, impacts = worst) {
  if (await page.evaluate(() => globalThis.axe === undefined)) await page.evaluate(source);
  // To tell of each element that is in order takes most of the time, and nobody reads it.
  const { violations } = await page.evaluate(() => globalThis.axe.run(document, { resultTypes: ['violations'] }));
  const report = violations.filter(({ impact }) => impacts.includes(impact)).map(({ id, nodes }) => `${id}: ${nodes.map((node) => `${node.html}\n    ${node.failureSummary}`).join('\n  ')}`);
  assert.deepEqual(report, [], `${what} has barriers:\n${report.join('\n')}`);
}
