// Renders a drawing (SVG) to a picture (PNG), three pixels a point, on a transparent ground.
// Takes the two files.

import { readFile } from 'node:fs/promises';
import { launchBrowser } from './support/browser.mjs';

const [drawing, picture] = process.argv.slice(2);
if (!picture) {
  console.error('usage: banner.mjs DRAWING PICTURE');
  process.exit(2);
}

const browser = await launchBrowser();
try {
  const page = await browser.newPage({ deviceScaleFactor: 3 });
  await page.setContent(`<body style="margin: 0">${await readFile(drawing, 'utf8')}</body>`);
  await page.locator('svg').screenshot({ path: picture, omitBackground: true });
} finally {
  await browser.close();
}
