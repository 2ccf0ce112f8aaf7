// Runs axe-core on a page without a script element, because the page's policy refuses those.

import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';

const source = await readFile(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

const worst = ['serious', 'critical'];
export const anyImpact = ['minor', 'moderate', ...worst];

/** Fails if axe-core finds a violation with one of these impacts. */
export async function assertAccessible(page, what, impacts = worst) {
  if (await page.evaluate(() => globalThis.axe === undefined)) await page.evaluate(source);
  // Reporting each passing element would take most of the time, and the tests do not use it.
  const { violations } = await page.evaluate(() => globalThis.axe.run(document, { resultTypes: ['violations'] }));
  const report = violations.filter(({ impact }) => impacts.includes(impact)).map(({ id, nodes }) => `${id}: ${nodes.map((node) => `${node.html}\n    ${node.failureSummary}`).join('\n  ')}`);
  assert.deepEqual(report, [], `${what} has barriers:\n${report.join('\n')}`);
}
