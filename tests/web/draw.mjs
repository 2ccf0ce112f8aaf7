// Renders drawings (SVG) to pictures with SCALE pixels per point: PNG with a transparent background, or
// JPEG, depending on the picture's name. Arguments: the scale and pairs of files.

import { readFile } from 'node:fs/promises';
import { launchBrowser } from './support/browser.mjs';

const jpegQuality = 85;

const [scale, ...files] = process.argv.slice(2);
if (files.length === 0 || files.length % 2 !== 0) {
  console.error('usage: draw.mjs SCALE DRAWING PICTURE [DRAWING PICTURE]...');
  process.exit(2);
}

const browser = await launchBrowser();
try {
  const page = await browser.newPage({ deviceScaleFactor: Number(scale) });
  for (let at = 0; at < files.length; at += 2) {
    const [drawing, path] = files.slice(at, at + 2);
    await page.setContent(`<body style="margin: 0">${await readFile(drawing, 'utf8')}</body>`);
    const form = /\.jpe?g$/i.test(path) ? { type: 'jpeg', quality: jpegQuality } : { type: 'png', omitBackground: true };
    await page.locator('svg').screenshot({ path, ...form });
  }
} finally {
  await browser.close();
}
