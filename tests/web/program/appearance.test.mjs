import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { middle } from '../support/drag.mjs';
import { eventually } from '../support/eventually.mjs';
import { openAll } from '../support/program.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

/** Goes from the root page to the customize page, and on to the row that is named, where one is. */
async function openCustomize(options = {}, list = undefined) {
  const opened = await openAll(browser, options);
  const { page, row, device } = opened;
  const tap = async (identifier) => {
    await row(identifier).scrollIntoViewIfNeeded();
    await row(identifier).getByRole('button').click();
    await eventually(async () => (await page.locator('.page.ghost').count()) === 0 && (await row(identifier).count()) === 0, `the page behind ${identifier} is shown`);
  };
  await tap('customize');
  if (list) await tap(list);
  const stored = async (key) => (await device.read().catch(() => ({})))[key];
  const swatch = (name) => row(name).locator('.accessory-view .view');
  const fill = (name) => swatch(name).evaluate((view) => getComputedStyle(view).backgroundColor);
  return { ...opened, stored, swatch, fill };
}

/** The first colour row of a list, with the key that it stands for. */
async function firstColor(page) {
  const row = page.locator('.page:not(.ghost) .row', { has: page.locator('.accessory-view') }).first();
  return row.getAttribute('data-identifier');
}

test('each colour that is picked is in the file while the picker is open, and once more when it closes', async () => {
  const { page, row, device, trouble, close } = await openCustomize({}, 'globalColors');
  const name = await firstColor(page);
  await row(name).getByRole('button').click();
  const picker = page.getByRole('dialog');
  await picker.waitFor();
  assert.equal(await page.getByRole('slider', { name: 'Opacity' }).count(), 0);
  const values = async () => Object.values(await device.read().catch(() => ({}))).map(([, value]) => value);
  await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
  await eventually(async () => (await values()).includes('FFFFFFFF'), 'white is in the file');
  await page.getByRole('tab', { name: 'Sliders' }).click();
  await page.getByRole('textbox', { name: 'Hex color' }).fill('0A84FF');
  await page.keyboard.press('Enter');
  await eventually(async () => (await values()).includes('0A84FFFF'), 'the next one has taken its place');
  await page.getByRole('button', { name: 'Close' }).click();
  await picker.waitFor({ state: 'detached' });
  await eventually(() => row(name).locator('.accessory-view .view').evaluate((view) => getComputedStyle(view).backgroundColor === 'rgb(10, 132, 255)'), 'the swatch has the colour');
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

test('a swatch is a circle with a ring', async () => {
  const { page, swatch, close } = await openCustomize({}, 'globalColors');
  const view = swatch(await firstColor(page));
  const look = await view.evaluate((element) => {
    const { borderRadius, borderTopWidth, borderTopColor, width, height } = getComputedStyle(element);
    return { borderRadius, ring: Number.parseFloat(borderTopWidth), borderTopColor, width, height };
  });
  assert.equal(look.borderRadius, '14.5px');
  assert.ok(look.ring >= 1 && look.ring <= 1.25);
  assert.deepEqual([look.width, look.height], ['29px', '29px']);
  assert.equal(look.borderTopColor, 'rgb(0, 122, 255)');
  await close();
});

const holds = {
  mouse: async ({ page, button }) => {
    const { x, y } = await middle(button);
    await page.mouse.move(x, y);
    await page.mouse.down();
    return () => page.mouse.up();
  },
  touch: async ({ page, context, button }) => {
    const session = await context.newCDPSession(page);
    const point = await middle(button);
    await session.send('Input.dispatchTouchEvent', { type: 'touchStart', touchPoints: [{ x: point.x, y: point.y }] });
    return () => session.send('Input.dispatchTouchEvent', { type: 'touchEnd', touchPoints: [] });
  },
  keyboard: async ({ page, button }) => {
    await button.focus();
    await page.keyboard.down('Enter');
    return () => page.keyboard.up('Enter');
  },
};

for (const [how, hold] of Object.entries(holds)) {
  test(`a press of one second on a colour row resets it, once: ${how}`, async () => {
    const options = how === 'touch' ? { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true } : {};
    const opened = await openCustomize(options, 'globalColors');
    const { page, row, device, fill, trouble, close } = opened;
    const name = await firstColor(page);
    const release = await hold({ ...opened, button: row(name).getByRole('button') });
    await eventually(async () => Object.values(await device.read().catch(() => ({}))).some(([, value]) => value === '#FA0000:0.0'), 'the reset is in the file');
    await eventually(async () => (await fill(name)) === 'rgba(0, 0, 0, 0)' || / \/ 0\)$|, 0\)$/.test(await fill(name)), 'the swatch is transparent');
    await release();
    await page.locator('.bar .back').click();
    assert.equal(await page.getByRole('dialog').count(), 0, 'the long press is no tap');
    assert.deepEqual(trouble, []);
    await close();
  });

  test(`a shorter press is a tap: ${how}`, async () => {
    const options = how === 'touch' ? { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true } : {};
    const opened = await openCustomize(options, 'globalColors');
    const { page, row, trouble, close } = opened;
    const release = await hold({ ...opened, button: row(await firstColor(page)).getByRole('button') });
    await release();
    await page.getByRole('dialog').waitFor();
    assert.deepEqual(trouble, []);
    await close();
  });
}

const thumbnail = (row) => row('backgroundImageTextCell').locator('.accessory-view img');

test('a photo of the library becomes the background image; the sheet changes and clears it', async () => {
  const { page, row, stored, trouble, close } = await openCustomize();
  const button = row('backgroundImageCell').getByRole('button');
  await row('backgroundImageCell').scrollIntoViewIfNeeded();
  await button.click();
  const photos = page.locator('.photos .photo:enabled');
  await photos.first().waitFor();
  await photos.first().click();
  await page.getByRole('dialog').waitFor({ state: 'detached', timeout: 60_000 });
  assert.equal((await stored('backgroundImage'))[0], 'bytes');
  await row('backgroundImageCell').getByText('Change background image').waitFor();
  await eventually(() => thumbnail(row).evaluate((image) => image.complete && image.naturalWidth > 0), 'the thumbnail is shown');

  await button.click();
  const sheet = page.getByRole('alertdialog');
  await sheet.getByText('What would you like to do?').waitFor();
  await sheet.getByText('Clearing the image will return to stock look.').waitFor();
  assert.deepEqual(await sheet.getByRole('button').allTextContents(), ['Change image', 'Clear image', 'Cancel']);
  await page.getByRole('button', { name: 'Clear image' }).click();
  await row('backgroundImageCell').getByText('Set background image').waitFor();
  await eventually(async () => (await stored('backgroundImage')) === undefined, 'it is cleared');
  assert.equal(await thumbnail(row).count(), 0);
  assert.deepEqual(trouble, []);
  await close();
});

const png = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGMwTpv5HwAENAIyWy0K4AAAAABJRU5ErkJggg==', 'base64');

test('a picture from the disk becomes the background image; what is none says why', async () => {
  const { page, row, stored, trouble, close } = await openCustomize();
  await row('backgroundImageCell').scrollIntoViewIfNeeded();
  await row('backgroundImageCell').getByRole('button').click();
  const input = page.locator('.image-picker input[type="file"]');
  await input.setInputFiles({ name: 'notes.png', mimeType: 'image/png', buffer: Buffer.from('no picture') });
  await page.getByRole('alert').getByText('The file is no PNG or JPEG picture.').waitFor();
  await input.setInputFiles({ name: 'cut.png', mimeType: 'image/png', buffer: png.subarray(0, 40) });
  await page.getByRole('alert').getByText(/cut off|incomplete/).waitFor();
  assert.equal(await stored('backgroundImage'), undefined);
  await input.setInputFiles({ name: 'mine.png', mimeType: 'image/png', buffer: png });
  await page.getByRole('dialog').waitFor({ state: 'detached', timeout: 60_000 });
  assert.equal((await stored('backgroundImage'))[0], 'bytes');
  // A refused upload is told by the browser, too.
  assert.deepEqual(trouble.filter((each) => !each.includes('422')), []);
  await close();
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: the customize page, a colour list and the pickers, ${appearance}`, async () => {
    const options = { serveOptions: ['--appearance', appearance], reducedMotion: 'reduce' };
    const customize = await openCustomize(options);
    await assertAccessible(customize.page, 'the customize page');
    await customize.row('backgroundImageCell').scrollIntoViewIfNeeded();
    await customize.row('backgroundImageCell').getByRole('button').click();
    await customize.page.locator('.photos').waitFor();
    await assertAccessible(customize.page, 'the photos');
    await customize.close();
    const colors = await openCustomize(options, 'globalColors');
    await assertAccessible(colors.page, 'the colours');
    await colors.row(await firstColor(colors.page)).getByRole('button').click();
    await colors.page.getByRole('dialog').waitFor();
    await assertAccessible(colors.page, 'the picker');
    await colors.close();
  });
}
