// Takes the pictures of the README: the root page on a phone and on a tablet, light and dark.
// Takes the folder to write to.

import { mkdir } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from './support/browser.mjs';
import { makeDevice, openWindow, serve } from './support/program.mjs';

const folder = process.argv[2];
if (!folder) {
  console.error('usage: screenshots.mjs FOLDER');
  process.exit(2);
}

const shapes = {
  phone: { traits: ['--idiom', 'phone', '--screen', '390x844@3'], viewport: { width: 1280, height: 908 } },
  tablet: { traits: ['--idiom', 'pad', '--screen', '820x1180@2'], viewport: { width: 1440, height: 1000 } },
};

async function take(browser, shape, appearance) {
  const device = await makeDevice();
  const server = await serve(device.root, [...shapes[shape].traits, '--appearance', appearance]);
  const { page, context, row } = await openWindow(browser, server.address, {
    viewport: shapes[shape].viewport, deviceScaleFactor: 1.5, reducedMotion: 'reduce',
  });
  if (shape === 'phone') {
    await row('presentationStyle').getByRole('radio').nth(1).click();
    await page.getByRole('switch', { name: 'Reverse module order' }).click();
    await page.locator('.last-change').getByText('reverseWhenTopPresented').waitFor();
  }
  await page.evaluate(() => document.fonts.ready);
  await page.mouse.move(0, 0);
  await page.screenshot({ path: join(folder, `root-${shape}-${appearance}.png`) });
  await context.close();
  await server.stop();
  await device.dispose();
}

await mkdir(folder, { recursive: true });
const browser = await launchBrowser();
try {
  for (const shape of Object.keys(shapes)) {
    for (const appearance of ['light', 'dark']) await take(browser, shape, appearance);
  }
} finally {
  await browser.close();
}
