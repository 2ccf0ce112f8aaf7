// Measures the time from a tap until it is on the screen and its value is in the file.
//
//   node benchmarks/tap-latency.mjs [TAPS [burst]] > figures.json
//
// Taps a switch of the root page in Chromium, each time after the animations of the last tap, or with
// "burst" immediately. The clock starts with the time stamp of the input event. "screen" is when the
// frame with the new state of the switch has been handed over for display, which waits for the screen's
// next refresh; "presented" is when the browser reports that it was displayed, in steps of 8 ms; "file"
// is when a reader that watches the folder has read the new value from the preference file.
// Figures are in milliseconds; the JSON goes to standard output, a summary to standard error.

import { readFileSync, watch } from 'node:fs';
import { basename, dirname } from 'node:path';
import { performance } from 'node:perf_hooks';
import { launchBrowser } from '../tests/web/support/browser.mjs';
import { openAll } from '../tests/web/support/program.mjs';

const identifier = 'presentFullyExpanded';
const warmUp = 20;
const taps = Number(process.argv[2] ?? 300);
const inBurst = process.argv[3] === 'burst';
const measures = ['screen', 'presented', 'file'];
// The browser does not report shorter times; they count as this value.
const leastReportedMs = 16;

/** In the page: records when the switch is tapped, has changed, and is shown. */
function observe(name) {
  const control = document.querySelector(`.row[data-identifier="${name}"] .switch`);
  const channel = new MessageChannel();
  const origin = performance.timeOrigin;
  globalThis.presented = new Map();
  new PerformanceObserver((list) => {
    for (const { name: event, startTime, duration } of list.getEntries()) {
      if (event === 'click') globalThis.presented.set(origin + startTime, duration);
    }
  }).observe({ type: 'event', durationThreshold: 16 });
  let tap;
  globalThis.shown = undefined;
  channel.port1.onmessage = () => {
    globalThis.shown = { start: origin + tap.start, screen: performance.now() - tap.start };
  };
  addEventListener('click', (event) => { tap = { start: event.timeStamp }; }, { capture: true });
  new MutationObserver(() => {
    requestAnimationFrame(() => channel.port2.postMessage(0));
  }).observe(control, { attributes: true, attributeFilter: ['aria-checked'] });
}

/** In the page: resolves when nothing moves any more and the last frame has been displayed. */
async function rest() {
  for (const animation of document.getAnimations()) animation.finish();
  const frame = () => new Promise((resolve) => { requestAnimationFrame(resolve); });
  for (let frames = 0; frames < 4; frames += 1) await frame();
}

/** Resolves with the time when the file was read to hold the value. */
function fileHolds(file, value) {
  const pattern = new RegExp(`<key>${identifier}</key>\\s*<${value}/>`);
  return new Promise((resolve) => {
    const watcher = watch(dirname(file), (_event, name) => {
      if (name !== basename(file) || !pattern.test(readFileSync(file, 'utf8'))) return;
      watcher.close();
      resolve(performance.timeOrigin + performance.now());
    });
  });
}

async function measure(page, device, control) {
  if (!inBurst) await page.evaluate(rest);
  const turnsOn = (await control.getAttribute('aria-checked')) !== 'true';
  const written = fileHolds(device.file, turnsOn);
  await page.evaluate(() => { globalThis.shown = undefined; });
  const box = await control.boundingBox();
  await page.mouse.click(box.x + box.width / 2, box.y + box.height / 2);
  const shown = await (await page.waitForFunction(() => globalThis.shown)).jsonValue();
  return { start: shown.start, screen: shown.screen, file: (await written) - shown.start };
}

function summary(samples, member) {
  const sorted = samples.map((sample) => sample[member]).sort((a, b) => a - b);
  const at = (part) => Number(sorted[Math.min(sorted.length - 1, Math.floor(part * sorted.length))].toFixed(2));
  return { median: at(0.5), p95: at(0.95), max: at(1) };
}

const browser = await launchBrowser();
try {
  const { page, device, row, close } = await openAll(browser);
  await page.evaluate(observe, identifier);
  const control = row(identifier).getByRole('switch');
  await control.scrollIntoViewIfNeeded();
  const samples = [];
  for (let tap = 0; tap < warmUp + taps; tap += 1) {
    const sample = await measure(page, device, control);
    if (tap >= warmUp) samples.push(sample);
  }
  const presented = new Map(await page.evaluate(() => [...globalThis.presented]));
  for (const sample of samples) sample.presented = presented.get(sample.start) ?? leastReportedMs;
  await close();
  const figures = { taps, unit: 'ms', browser: browser.version() };
  for (const member of measures) figures[member] = summary(samples, member);
  console.log(JSON.stringify(figures, null, 2));
  for (const member of measures) {
    const { median, p95, max } = figures[member];
    console.error(`${member.padEnd(9)} median ${median} ms, p95 ${p95} ms, max ${max} ms`);
  }
} finally {
  await browser.close();
}
