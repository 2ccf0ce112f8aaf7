// Takes the screenshots for the documents, each from a new device, so that the same page always results
// in the same picture. Arguments: the folder to write to, and optionally the names of the pictures.

import { mkdir } from 'node:fs/promises';
import { join } from 'node:path';
import { launchBrowser } from './support/browser.mjs';
import { makeDevice, openWindow, serve } from './support/program.mjs';

const [folder, ...wanted] = process.argv.slice(2);
if (!folder) {
  console.error('usage: screenshots.mjs FOLDER [NAME...]');
  process.exit(2);
}

const shapes = {
  phone: { idiom: 'phone', screen: '390x844@3', viewport: { width: 1280, height: 908 }, scale: 1.5 },
  tablet: { idiom: 'pad', screen: '820x1180@2', viewport: { width: 1440, height: 1000 }, scale: 1.25 },
};
const appearances = ['light', 'dark'];

// --- user actions, without a pointer that would stay over a row ---

const row = (page, identifier) => page.locator(`.page:not(.ghost) .row[data-identifier="${identifier}"]`);
const press = (locator) => locator.dispatchEvent('click');

async function openPage(page, ...rows) {
  for (const identifier of rows) {
    const found = row(page, identifier);
    await found.scrollIntoViewIfNeeded();
    await press(found.locator('button.cell'));
    await found.waitFor({ state: 'detached' });
  }
}

async function changeAnOption(page) {
  await press(row(page, 'presentationStyle').getByRole('radio').nth(1));
  await press(page.getByRole('switch', { name: 'Reverse module order' }));
  await page.locator('.last-change').getByText('reverseWhenTopPresented').waitFor();
  await row(page, 'reverseWhenTopPresented').hover();
  await page.locator('.pane-row .facts').getByText('reverseWhenTopPresented').waitFor();
}

// A row may grow when it becomes visible, which moves the end.
async function showLinks(page) {
  const scroller = page.locator('.table-scroll');
  const isAtEnd = (element) => element.scrollTop + element.clientHeight >= element.scrollHeight - 1;
  while (!(await scroller.evaluate(isAtEnd)) || !(await row(page, 'problemLink').locator('.cell').isVisible())) {
    await scroller.evaluate((element) => { element.scrollTop = element.scrollHeight; });
    await row(page, 'problemLink').locator('.cell').waitFor();
  }
}

/** Opens a list of colours, then the picker for one of its rows, and picks a colour. */
async function pickAColor(page) {
  await openPage(page, 'customize', 'globalColors');
  await press(row(page, 'wifiColor').locator('button.cell'));
  await press(page.locator('.color-cell').nth(64));
  await page.locator('.color-cell[aria-selected="true"][data-color]').waitFor();
}

async function chooseAPhoto(page) {
  await openPage(page, 'customize');
  await press(row(page, 'backgroundImageCell').locator('button.cell'));
  await page.locator('.photo-image').first().waitFor();
}

const pictures = [
  { name: 'root', shapes: ['phone', 'tablet'], whole: 'window', prepare: (page, shape) => (shape === 'phone' ? changeAnOption(page) : undefined) },
  { name: 'root-whole', shapes: ['phone'], whole: 'page' },
  { name: 'links', shapes: ['phone'], prepare: showLinks },
  { name: 'arrange', shapes: ['phone', 'tablet'], prepare: (page) => openPage(page, 'arrangeModules') },
  { name: 'favorites', shapes: ['phone', 'tablet'], prepare: (page) => openPage(page, 'favoriteModules') },
  { name: 'customize', shapes: ['phone'], prepare: (page) => openPage(page, 'customize') },
  { name: 'colors', shapes: ['phone'], prepare: (page) => openPage(page, 'customize', 'globalColors') },
  { name: 'color-picker', shapes: ['phone'], prepare: pickAColor },
  { name: 'photos', shapes: ['phone'], prepare: chooseAPhoto },
];

// --- taking the screenshots ---

/** Hides the focus ring and makes the times in the log equal; nothing else differs between runs. */
async function settle(page) {
  await page.waitForFunction(() => document.fonts.status === 'loaded' && [...document.images].every((image) => image.complete));
  await page.evaluate(() => {
    document.activeElement?.blur();
    for (const time of document.querySelectorAll('.log time')) time.textContent = '0.000 s';
  });
}

async function inWindow(browser, { idiom, screen, viewport, scale }, appearance, use) {
  const device = await makeDevice();
  const server = await serve(device.root, ['--idiom', idiom, '--screen', screen, '--appearance', appearance]);
  try {
    const { page, context } = await openWindow(browser, server.address, { viewport, deviceScaleFactor: scale, reducedMotion: 'reduce' });
    await use(page);
    await context.close();
  } finally {
    await server.stop();
    await device.dispose();
  }
}

const withHeight = (shape, height) => ({
  ...shape, screen: shape.screen.replace(/x\d+/, `x${height}`), viewport: { ...shape.viewport, height: height + 80 },
});

/** The shape of a device whose screen is exactly as long as the page. */
async function tall(browser, shape) {
  let height = 0;
  await inWindow(browser, withHeight(shape, 4000), 'light', async (page) => {
    height = await page.locator('.table-scroll').evaluate((scroller) =>
      scroller.lastElementChild.offsetTop + scroller.lastElementChild.offsetHeight + parseFloat(getComputedStyle(scroller).paddingBottom));
  });
  return withHeight(shape, Math.ceil(height));
}

async function take(page, whole, path) {
  if (whole === 'window') return page.screenshot({ path });
  if (whole === 'page') return page.locator('.screen').screenshot({ path });
  const { x, y, width, height } = await page.locator('.device').boundingBox();
  const margin = 16;
  return page.screenshot({ path, clip: { x: x - margin, y: y - margin, width: width + 2 * margin, height: height + 2 * margin } });
}

async function takeAll(browser, { name, shapes: forms, whole, prepare }) {
  for (const form of forms) {
    const shape = whole === 'page' ? await tall(browser, shapes[form]) : shapes[form];
    for (const appearance of appearances) {
      const file = [name, ...(forms.length > 1 ? [form] : []), appearance].join('-');
      await inWindow(browser, shape, appearance, async (page) => {
        await prepare?.(page, form);
        await settle(page);
        await take(page, whole, join(folder, `${file}.png`));
      });
      console.log(file);
    }
  }
}

await mkdir(folder, { recursive: true });
const browser = await launchBrowser();
try {
  for (const picture of pictures.filter(({ name }) => wanted.length === 0 || wanted.includes(name))) await takeAll(browser, picture);
} finally {
  await browser.close();
}
