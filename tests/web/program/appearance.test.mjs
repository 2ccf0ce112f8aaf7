import assert from 'node:assert/strict';
import { test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { finger, middle } from '../support/drag.mjs';
import { becomes, eventually, still } from '../support/eventually.mjs';
import { noisyPng, tinyPng } from '../support/pictures.mjs';
import { useProgram } from '../support/whole.mjs';

const { fresh, open } = useProgram();

const color = 'backgroundColor';
const cleared = '#FA0000:0.0';
const phone = { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true };

/** Opens the customize page, then one of its lists of colours. */
async function goTo(opened, list) {
  const { page, row, device } = opened;
  for (const identifier of ['customize', list].filter((each) => each)) {
    await row(identifier).scrollIntoViewIfNeeded();
    await row(identifier).getByRole('button').click();
    await row(identifier).waitFor({ state: 'detached' });
    await still(page);
  }
  const stored = async (key) => (await device.read())[key];
  const dialog = page.getByRole('dialog');
  const fill = (name) => row(name).locator('.accessory-view .view').evaluate((view) => getComputedStyle(view).backgroundColor);
  return { ...opened, stored, dialog, fill };
}

const openColors = async () => goTo(await fresh(), 'globalColors');
const openCustomize = async () => goTo(await fresh());

/** A tap without delay, so that it is never a long press. */
const tap = (button) => button.dispatchEvent('click');

const ways = {
  Grid: async ({ page }) => {
    await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
    return 'FFFFFFFF';
  },
  Spectrum: async ({ page }) => {
    const box = await page.getByRole('slider', { name: /^Spectrum/ }).boundingBox();
    await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
    await page.mouse.down();
    await page.mouse.move(box.x - 5, box.y + box.height / 2, { steps: 4 });
    await page.mouse.up();
    return 'FF0000FF';
  },
  Sliders: async ({ page }) => {
    await page.getByRole('slider', { name: 'Green' }).focus();
    await page.keyboard.press('End');
    await page.getByRole('slider', { name: 'Red' }).focus();
    await page.keyboard.press('Home');
    await page.getByRole('slider', { name: 'Blue' }).focus();
    await page.keyboard.press('Home');
    return '00FF00FF';
  },
};

for (const [way, pick] of Object.entries(ways)) {
  test(`a picked colour is in the file while the picker is open: ${way}`, async () => {
    const opened = await openColors();
    const { page, row, dialog, stored, fill, trouble } = opened;
    await tap(row(color).getByRole('button'));
    await dialog.waitFor();
    assert.equal(await page.getByRole('slider', { name: 'Opacity' }).count(), 0);
    await page.getByRole('tab', { name: way }).click();
    const picked = await pick(opened);
    await becomes(async () => (await stored(color))?.[1], picked, 'the colour is in the file');
    assert.ok(await dialog.isVisible());
    const [red, green, blue] = [0, 2, 4].map((place) => parseInt(picked.slice(place, place + 2), 16));
    await becomes(() => fill(color), `rgb(${red}, ${green}, ${blue})`, 'the swatch has the colour');
    assert.deepEqual(trouble, []);
  });
}

test('the colour is written once more when the picker closes', async () => {
  const { page, row, device, dialog, stored, fill, trouble } = await openColors();
  await tap(row(color).getByRole('button'));
  await dialog.waitFor();
  await page.getByRole('tab', { name: 'Sliders' }).click();
  await page.getByRole('textbox', { name: 'Hex color' }).fill('0A84FF');
  await page.keyboard.press('Enter');
  await becomes(() => stored(color), ['str', '0A84FFFF'], 'the colour is in the file');
  await device.writePlist(device.file, { fromOutside: 7 });
  await page.getByRole('button', { name: 'Close' }).click();
  await dialog.waitFor({ state: 'detached' });
  await becomes(() => stored(color), ['str', '0A84FFFF'], 'the colour is in the file again');
  assert.equal(await fill(color), 'rgb(10, 132, 255)');
  assert.deepEqual(trouble, []);
});

test('a swatch is a circle with a ring', async () => {
  const { row } = await openColors();
  const look = await row(color).locator('.accessory-view .view').evaluate((element) => {
    const { borderRadius, borderTopWidth, borderTopColor, width, height } = getComputedStyle(element);
    return { borderRadius, ring: Number.parseFloat(borderTopWidth), borderTopColor, width, height };
  });
  assert.equal(look.borderRadius, '14.5px');
  assert.ok(look.ring >= 1 && look.ring <= 1.25);
  assert.deepEqual([look.width, look.height], ['29px', '29px']);
  assert.equal(look.borderTopColor, 'rgb(0, 122, 255)');
});

const holds = {
  mouse: async ({ page, button }) => {
    await button.hover();
    await page.mouse.down();
    return () => page.mouse.up();
  },
  touch: async ({ page, button }) => {
    const hand = await finger(page);
    await hand.down(await middle(button));
    return hand.up;
  },
  keyboard: async ({ page, button }) => {
    await button.focus();
    await page.keyboard.down('Enter');
    return () => page.keyboard.up('Enter');
  },
};

for (const [how, hold] of Object.entries(holds)) {
  test(`a press of one second on a colour row clears it and does not tap: ${how}`, async () => {
    const opened = how === 'touch' ? await goTo(await open(phone), 'globalColors') : await openColors();
    const { page, row, dialog, stored, fill, trouble, close } = opened;
    const release = await hold({ ...opened, button: row(color).getByRole('button') });
    await becomes(() => stored(color), ['str', cleared], 'it is cleared in the file');
    await becomes(() => fill(color), /, 0\)$/, 'the swatch is transparent');
    await release();
    await page.locator('.bar .back').click();
    await row('globalColors').waitFor();
    assert.equal(await dialog.count(), 0, 'the picker stays closed');
    assert.deepEqual(trouble, []);
    await close?.();
  });
}

test('a short press on a colour row is a tap', async () => {
  const { row, dialog, stored, trouble } = await openColors();
  // Sends both at once: on a slow machine a second may pass between two mouse messages.
  await row(color).getByRole('button').evaluate((button) => {
    const point = { pointerId: 1, isPrimary: true, bubbles: true };
    for (const type of ['pointerdown', 'pointerup']) button.dispatchEvent(new PointerEvent(type, point));
  });
  await dialog.waitFor();
  assert.equal(await stored(color), undefined);
  assert.deepEqual(trouble, []);
});

const thumbnail = (row) => row('backgroundImageTextCell').locator('.accessory-view img');

/** Opens the photos from a page without a background image. */
async function openPhotos(opened) {
  const { row, dialog } = opened;
  await row('backgroundImageCell').getByRole('button', { name: 'Set background image' }).click();
  await dialog.waitFor();
  return opened;
}

async function assertStored({ row, dialog, stored }) {
  await dialog.waitFor({ state: 'detached' });
  assert.equal((await stored('backgroundImage'))[0], 'bytes');
  await row('backgroundImageCell').getByText('Change background image').waitFor();
  await eventually(() => thumbnail(row).evaluate((image) => image.complete && image.naturalWidth > 0), 'the thumbnail is shown');
}

test('a photo of the library becomes the background image', async () => {
  const opened = await openPhotos(await openCustomize());
  const { page, trouble } = opened;
  await becomes(() => page.locator('.photos .photo:enabled').count(), 5, 'the photos are shown');
  await page.getByRole('button', { name: 'IMG_0003.JPG' }).click();
  await assertStored(opened);
  assert.deepEqual(trouble, []);
});

test('the sheet offers to change, to clear and to keep the image', async () => {
  const opened = await openPhotos(await openCustomize());
  const { page, row, dialog, stored, trouble } = opened;
  await page.getByRole('button', { name: 'IMG_0001.JPG' }).click();
  await assertStored(opened);
  const before = await stored('backgroundImage');
  const sheet = page.getByRole('alertdialog');
  const choose = async (name) => {
    await row('backgroundImageCell').getByRole('button').click();
    await sheet.getByText('What would you like to do?').waitFor();
    await sheet.getByText('Clearing the image will return to stock look.').waitFor();
    assert.deepEqual(await sheet.getByRole('button').allTextContents(), ['Change image', 'Clear image', 'Cancel']);
    await sheet.getByRole('button', { name }).click();
    await sheet.waitFor({ state: 'detached' });
  };
  await choose('Cancel');
  assert.deepEqual(await stored('backgroundImage'), before);

  await choose('Change image');
  await dialog.waitFor();
  await page.getByRole('button', { name: 'IMG_0005.PNG' }).click();
  await assertStored(opened);
  assert.notDeepEqual(await stored('backgroundImage'), before);

  await choose('Clear image');
  await row('backgroundImageCell').getByText('Set background image').waitFor();
  assert.equal(await stored('backgroundImage'), undefined);
  assert.equal(await thumbnail(row).count(), 0);
  assert.deepEqual(trouble, []);
});

test('a picture from the disk becomes the background image; a file that is not a picture says why', async () => {
  const opened = await openPhotos(await openCustomize());
  const { page, stored, trouble } = opened;
  const choose = async (name, buffer) => {
    const chooser = page.waitForEvent('filechooser');
    await page.getByText('Choose a picture of your own').click();
    await (await chooser).setFiles({ name, mimeType: 'image/png', buffer });
  };
  await choose('notes.png', Buffer.from('no picture'));
  await page.getByRole('alert').getByText('The file is not a PNG or JPEG picture.').waitFor();
  await choose('cut.png', tinyPng.subarray(0, 40));
  await page.getByRole('alert').getByText(/cut off|incomplete/).waitFor();
  assert.equal(await stored('backgroundImage'), undefined);
  await choose('mine.png', tinyPng);
  await assertStored(opened);
  // The browser also reports each file that was refused.
  assert.deepEqual(trouble.filter((each) => !each.includes('422')), []);
});

test('a picture dropped on the picker becomes the background image', async () => {
  const opened = await openPhotos(await openCustomize());
  const { page, trouble } = opened;
  const dataTransfer = await page.evaluateHandle((bytes) => {
    const transfer = new DataTransfer();
    transfer.items.add(new File([Uint8Array.from(bytes)], 'mine.png', { type: 'image/png' }));
    return transfer;
  }, [...tinyPng]);
  await page.dispatchEvent('.image-picker', 'dragover', { dataTransfer });
  await page.locator('.drop-here').waitFor();
  await page.dispatchEvent('.image-picker', 'drop', { dataTransfer });
  await assertStored(opened);
  assert.deepEqual(trouble, []);
});

/** Records the look of the picker as soon as it shows that it is busy. */
async function watchBusy(page) {
  await page.evaluate(() => {
    new MutationObserver((_, observer) => {
      const picker = document.querySelector('.image-picker[aria-busy="true"]');
      const spinner = picker?.querySelector('.sheet-layers > .view-activity [role="progressbar"]');
      if (!spinner) return;
      observer.disconnect();
      globalThis.busy = {
        dimmed: spinner.closest('.view').nextElementSibling.style.opacity,
        free: picker.querySelectorAll('.photo:enabled, input:enabled').length,
      };
    }).observe(document.body, { subtree: true, childList: true, attributes: true });
  });
  return () => page.evaluate(() => globalThis.busy);
}

test('the picker is dimmed and busy until the picture is stored', async () => {
  const opened = await openPhotos(await openCustomize());
  const { page, trouble } = opened;
  const busy = await watchBusy(page);
  await page.locator('.image-picker input[type="file"]').setInputFiles({ name: 'noise.png', mimeType: 'image/png', buffer: noisyPng(2000, 1500) });
  await assertStored(opened);
  assert.deepEqual(await busy(), { dimmed: '0.5', free: 0 });
  assert.deepEqual(trouble, []);
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: the customize page, a colour list and the pickers, ${appearance}`, async () => {
    const opened = await goTo(await fresh({ appearance }));
    const { page, row, dialog, trouble } = opened;
    await assertAccessible(page, 'the customize page');
    await openPhotos(opened);
    await assertAccessible(page, 'the photos');
    await page.getByRole('button', { name: 'Cancel' }).click();
    await dialog.waitFor({ state: 'detached' });
    await row('globalColors').getByRole('button').click();
    await row(color).waitFor();
    await assertAccessible(page, 'the colours');
    await tap(row(color).getByRole('button'));
    await dialog.waitFor();
    await assertAccessible(page, 'the picker');
    assert.deepEqual(trouble, []);
  });
}
