// A separate Chromium for each test file, without the user's profile.

import { chromium } from 'playwright-core';

const switches = [
  '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync',
];

/** The profile is a temporary folder that is deleted when the browser is closed. */
export function launchBrowser() {
  return chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', headless: true, args: switches });
}

/** Collects what a page must never cause: console errors, uncaught errors, refused content. */
export function watchForTrouble(page) {
  const trouble = [];
  page.on('console', (message) => {
    if (message.type() === 'error' || message.type() === 'warning') trouble.push(`${message.type()}: ${message.text()}`);
  });
  page.on('pageerror', (error) => trouble.push(`uncaught: ${error.stack ?? error}`));
  return trouble;
}
