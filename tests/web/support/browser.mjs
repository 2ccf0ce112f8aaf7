// A Chromium of its own for each test file, with nothing of the user's.

import { chromium } from 'playwright-core';

const switches = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync',
];

/** Its profile is a temporary folder that goes away when the browser is closed. */
export function launchBrowser() {
  return chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', headless: true, args: switches });
}

/** Collects what a page must never do: errors of its console, uncaught ones, refused content. */
export function watchForTrouble(page) {
  const trouble = [];
  page.on('console', (message) => {
    if (message.type() === 'error' || message.type() === 'warning') trouble.push(`${message.type()}: ${message.text()}`);
  });
  page.on('pageerror', (error) => trouble.push(`uncaught: ${error.stack ?? error}`));
  return trouble;
}
