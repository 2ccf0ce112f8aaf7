// Shared by the tests of a file that drive the real program: a browser and its windows.

import { after, before } from 'node:test';
import { launchBrowser } from './browser.mjs';
import { closeAll, openAll, openWindow, shareAll } from './program.mjs';

/**
 * `open` returns a new device, server and window for one test, `fresh` those that the tests of the file
 * share (see `shareAll`), `openNext` another window on a server. Everything is closed at the end.
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
