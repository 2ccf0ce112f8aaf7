// What the tests of a file share that drive the real program: a browser, and a window in it.

import { after, before } from 'node:test';
import { launchBrowser } from './browser.mjs';
import { closeAll, openAll, openWindow, shareAll } from './program.mjs';

/**
 * `open` gives a test a device, a server and a window of its own, `fresh` those that the tests of the
 * file share (see `shareAll`), `openNext` one more window on a server. All of it is closed in the end.
 */
export function useProgram() {
  let browser;
  let shared;
  before(async () => { browser = await launchBrowser(); });
  after(async () => {
    await closeAll();
    await browser.close();
  });
  return {
    open: (options) => openAll(browser, options),
    openNext: (address, options) => openWindow(browser, address, options),
    fresh: async (wanted) => {
      shared ??= shareAll(browser);
      return (await shared).fresh(wanted);
    },
  };
}
