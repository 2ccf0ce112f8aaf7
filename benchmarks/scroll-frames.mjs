// How the page of the favourites scrolls in Chromium with many modules installed.
//
//   node benchmarks/scroll-frames.mjs [MODULES [POINTS]] > figures.json
//
// Opens the page with the program and scrolls it from end to end by POINTS (default 90) per frame. Then
// drags its last row to the top while the table scrolls by itself. For each frame it measures the time
// since the previous frame and the work of the page's own thread. A frame counts as dropped if the next
// one comes more than half a frame late. Figures are in milliseconds; the JSON goes to standard output, a
// summary to standard error.

import { launchBrowser } from '../tests/web/support/browser.mjs';
import { openAll } from '../tests/web/support/program.mjs';

const modules = Number(process.argv[2] ?? 1000);
const frameMs = 1000 / 60;
const pointsPerFrame = Number(process.argv[3] ?? 90);
const warmUpPoints = 3000;

/** In the page: collects the intervals of frames until `globalThis.framesDone` is set. */
function watchFrames() {
  globalThis.framesDone = false;
  globalThis.intervals = [];
  let last;
  const frame = (time) => {
    if (last !== undefined) globalThis.intervals.push(time - last);
    last = time;
    if (!globalThis.framesDone) requestAnimationFrame(frame);
  };
  requestAnimationFrame(frame);
}

/** In the page: scrolls the table to its end by this number of points per frame. */
function scrollToEnd(points) {
  const scroller = document.querySelector('.page:not(.ghost) .table-scroll');
  return new Promise((resolve) => {
    const step = () => {
      const before = scroller.scrollTop;
      scroller.scrollTop += points;
      if (scroller.scrollTop === before) resolve();
      else requestAnimationFrame(step);
    };
    requestAnimationFrame(step);
  });
}

async function busyTime(session) {
  const { metrics } = await session.send('Performance.getMetrics');
  return metrics.find(({ name }) => name === 'TaskDuration').value * 1000;
}

/** Runs the work while recording frames. */
async function framesOf(page, session, work) {
  const before = await busyTime(session);
  await page.evaluate(watchFrames);
  await work();
  await page.evaluate(() => { globalThis.framesDone = true; });
  const intervals = await page.evaluate(() => globalThis.intervals);
  const busy = await busyTime(session) - before;
  const sorted = [...intervals].sort((a, b) => a - b);
  const at = (part) => Number(sorted[Math.min(sorted.length - 1, Math.floor(part * sorted.length))].toFixed(1));
  return {
    frames: intervals.length,
    dropped: intervals.filter((interval) => interval > frameMs * 1.5).length,
    interval: { median: at(0.5), p99: at(0.99), max: at(1) },
    workPerFrame: Number((busy / intervals.length).toFixed(2)),
  };
}

/** Holds a row's handle at the upper edge of the table until the table has scrolled to its top. */
async function carryToTop(page) {
  const scroller = page.locator('.page:not(.ghost) .table-scroll');
  const handle = page.locator('.page:not(.ghost) .row').last().getByRole('button', { name: /^Move / });
  await handle.scrollIntoViewIfNeeded();
  const from = await handle.boundingBox();
  const edge = await scroller.boundingBox();
  await page.mouse.move(from.x + from.width / 2, from.y + from.height / 2);
  await page.mouse.down();
  await page.mouse.move(from.x + from.width / 2, edge.y + 4, { steps: 10 });
  await page.waitForFunction(() => document.querySelector('.page:not(.ghost) .table-scroll').scrollTop <= 0, undefined, { timeout: 120_000 });
  await page.mouse.up();
}

const browser = await launchBrowser();
try {
  const { page, context, row, close } = await openAll(browser, { prepare: (device) => device.installModules(modules) });
  const session = await context.newCDPSession(page);
  await session.send('Performance.enable', { timeDomain: 'threadTicks' });
  await row('favoriteModules').scrollIntoViewIfNeeded();
  await row('favoriteModules').getByRole('button').click();
  await page.locator('.table-scroll.editing .editing-control').first().waitFor();
  await page.waitForFunction(() => !document.querySelector('.page.ghost'));
  await page.evaluate(scrollToEnd, warmUpPoints);
  await page.evaluate(() => { document.querySelector('.page:not(.ghost) .table-scroll').scrollTop = 0; });
  const figures = { modules, unit: 'ms', browser: browser.version() };
  figures.scroll = await framesOf(page, session, () => page.evaluate(scrollToEnd, pointsPerFrame));
  figures.drag = await framesOf(page, session, () => carryToTop(page));
  await close();
  console.log(JSON.stringify(figures, null, 2));
  for (const what of ['scroll', 'drag']) {
    const { frames, dropped, interval, workPerFrame } = figures[what];
    console.error(`${what}: ${frames} frames, ${dropped} dropped; interval median ${interval.median}, p99 ${interval.p99}, max ${interval.max} ms; work ${workPerFrame} ms a frame`);
  }
} finally {
  await browser.close();
}
