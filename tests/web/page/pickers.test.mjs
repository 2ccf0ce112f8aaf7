import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const rgba = [1, 0, 0, 1];

/** A picker over the page; `pick` is answered as the application would. */
async function openPicker(node, { device, ...options } = {}) {
  const fixture = everyKind(device);
  const { tree, builder } = fixture;
  const id = builder.add({ kind: 'colorPicker', class: 'UIColorPickerViewController', frame: [0, 0, 390, 844], ...node }, node.layers?.(builder) ?? []);
  tree.nodes[tree.root].children.push(id);
  const opened = await openAlone(browser, tree, options);
  opened.server.answer((action) => (action.action === 'pick' ? [{ op: 'replace', path: `/nodes/${id}/color`, value: { rgba: action.rgba } }] : []));
  await opened.page.getByRole('dialog').waitFor();
  const picks = () => opened.server.actions.filter(({ action }) => action === 'pick').map((each) => each.rgba.map((part) => Math.round(part * 255)));
  const shown = () => opened.page.locator('.color-result output').textContent();
  return { ...opened, id, picks, shown };
}

test('the grid picks a colour by a click, and by keyboard', async () => {
  const { page, context, picks, shown, trouble } = await openPicker({ color: { rgba } });
  assert.equal(await shown(), '#FF0000');
  assert.equal(await page.getByRole('gridcell').count(), 120);
  await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
  await eventually(async () => (await shown()) === '#FFFFFF', 'white is picked');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowRight');
  await page.keyboard.press('Enter');
  await eventually(() => picks().length === 2, 'the second colour is picked');
  assert.deepEqual(picks()[0], [255, 255, 255, 255]);
  assert.equal(await page.getByRole('gridcell', { selected: true }).getAttribute('data-color'), (await shown()).slice(1));
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the spectrum sends each colour while the finger moves, and arrow keys move it', async () => {
  const { page, context, picks, shown, trouble } = await openPicker({ color: { rgba } });
  await page.getByRole('tab', { name: 'Spectrum' }).click();
  const spectrum = page.getByRole('slider', { name: /^Spectrum/ });
  const box = await spectrum.boundingBox();
  await page.mouse.move(box.x + box.width / 3, box.y + box.height / 2);
  await page.mouse.down();
  for (const share of [0.4, 0.5, 0.6]) {
    const before = picks().length;
    await page.mouse.move(box.x + box.width * share, box.y + box.height / 2);
    await eventually(() => picks().length > before, 'the colour under the finger is sent');
  }
  await page.mouse.up();
  const [red, green, blue] = picks().at(-1);
  assert.ok(blue === 255 && red < 10 && green > 90 && green < 115, `${red} ${green} ${blue} is the blue at three fifths`);
  await spectrum.focus();
  const count = picks().length;
  await page.keyboard.press('ArrowUp');
  await eventually(() => picks().length === count + 1, 'an arrow key picks a colour');
  await eventually(async () => (await spectrum.getAttribute('aria-valuetext')).includes('lightness 52 %'), 'it is lighter');
  assert.match(await shown(), /^#[0-9A-F]{6}$/);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the sliders, their fields and the hex field pick', async () => {
  const { page, context, picks, shown, trouble } = await openPicker({ color: { rgba }, alpha: false });
  await page.getByRole('tab', { name: 'Sliders' }).click();
  await page.getByRole('slider', { name: 'Green' }).focus();
  await page.keyboard.press('ArrowRight');
  await eventually(async () => (await shown()) === '#FF0100', 'the slider picks');
  await page.getByRole('textbox', { name: 'Blue as a number' }).fill('128');
  await page.keyboard.press('Tab');
  await eventually(async () => (await shown()) === '#FF0180', 'the field picks');
  const hex = page.getByRole('textbox', { name: 'Hex color' });
  for (const [typed, result] of [['#0a84ff', '#0A84FF'], ['f00', '#FF0000'], ['nonsense', '#FF0000']]) {
    await hex.fill(typed.slice(0, 7));
    await page.keyboard.press('Enter');
    await eventually(async () => (await shown()) === result, `${typed} is ${result}`);
  }
  assert.equal(await hex.inputValue(), 'FF0000');
  assert.deepEqual(picks().at(-1), [255, 0, 0, 255]);
  assert.equal(picks().length, 4, 'an invalid colour is not sent');
  assert.equal(await page.getByRole('slider', { name: 'Opacity' }).count(), 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the opacity is offered only if the picker supports it', async () => {
  const { page, context, picks } = await openPicker({ color: { rgba }, alpha: true });
  await page.getByRole('slider', { name: 'Opacity' }).focus();
  await page.keyboard.press('Home');
  await eventually(() => picks().at(-1)?.[3] === 0, 'the opacity is picked');
  assert.deepEqual(picks().at(-1), [255, 0, 0, 0]);
  await context.close();
});

test('a named colour is shown and computed with its visible components', async () => {
  const { page, context, shown, picks } = await openPicker({ color: { name: 'systemGreenColor' } });
  await eventually(async () => (await shown()) === '#34C759', 'the name has components');
  await page.getByRole('tab', { name: 'Sliders' }).click();
  await page.getByRole('slider', { name: 'Red' }).focus();
  await page.keyboard.press('End');
  await eventually(() => picks().length > 0, 'red is picked');
  assert.deepEqual(picks().at(-1), [255, 199, 89, 255]);
  await context.close();
});

test('the last picked colour is sent before the picker is closed', async () => {
  const { page, context, server, picks } = await openPicker({ color: { rgba } });
  server.answer(() => undefined);
  await page.getByRole('gridcell', { name: 'black, 000000' }).click();
  await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
  await page.getByRole('button', { name: 'Close' }).click();
  await eventually(() => server.actions.at(-1)?.action === 'close', 'the picker is closed');
  assert.deepEqual(picks(), [[0, 0, 0, 255], [255, 255, 255, 255]]);
  await context.close();
});

test('the last picked colour stays shown if the picker is closed before the answer', async () => {
  const { page, context, server, shown } = await openPicker({ color: { rgba } });
  const sample = () => page.locator('.color-sample i').evaluate((each) => getComputedStyle(each).backgroundColor);
  server.answer(() => undefined);
  await page.getByRole('gridcell', { name: 'black, 000000' }).click();
  await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
  await page.getByRole('button', { name: 'Close' }).click();
  await eventually(() => server.actions.at(-1)?.action === 'close', 'the picker is closed');
  const [first] = server.actions;
  server.patch([{ op: 'replace', path: `/nodes/${first.node}/color`, value: { rgba: first.rgba } }], first.sequence);
  for (let frame = 0; frame < 2; frame += 1) await page.evaluate(() => new Promise(requestAnimationFrame));
  assert.equal(await sample(), 'rgb(255, 255, 255)');
  assert.equal(await shown(), '#FFFFFF');
  await context.close();
});

test('an answer after the picker was closed does not restore a colour', async () => {
  const { page, context, server, picks } = await openPicker({ color: { rgba } });
  server.answer(() => undefined);
  await page.getByRole('gridcell', { name: 'black, 000000' }).click();
  await page.getByRole('gridcell', { name: 'white, FFFFFF' }).click();
  await page.getByRole('button', { name: 'Close' }).click();
  await eventually(() => server.actions.at(-1)?.action === 'close', 'the picker is closed');
  for (const { sequence } of server.actions) server.patch([], sequence);
  await page.keyboard.press('Escape');
  await eventually(() => server.actions.filter(({ action }) => action === 'close').length === 2, 'the next action has come');
  assert.equal(picks().length, 2);
  await context.close();
});

test('Escape closes a picker', async () => {
  for (const kind of ['colorPicker', 'imagePicker']) {
    const { page, context, server, id } = await openPicker({ kind, color: { rgba }, photos: [] });
    await page.keyboard.press('Escape');
    await eventually(() => server.actions.at(-1)?.action === 'close', 'it is closed');
    assert.equal(server.actions.at(-1).node, id);
    await context.close();
  }
});

const png = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGP4z8DwHwAFAAH/q842iQAAAABJRU5ErkJggg==', 'base64');
const hash = (digit) => digit.repeat(64);
const photos = [
  { name: 'beach.jpg', image: { hash: hash('a'), width: 40, height: 30, scale: 1 } },
  { name: 'forest.png', image: { hash: hash('b'), width: 30, height: 40, scale: 1 } },
  { name: 'notes.txt', problem: 'The file is not a PNG or JPEG picture.' },
];

async function openPhotos(node = {}, options = {}) {
  const opened = await openPicker({ kind: 'imagePicker', class: 'UIImagePickerController', photos, ...node }, {
    ...options,
    routes: { '/images/*': (route) => route.fulfill({ body: png, contentType: 'image/png' }), '/photos': options.upload },
  });
  const chosen = () => opened.server.actions.filter(({ action }) => action === 'photo').map(({ name }) => name);
  return { ...opened, chosen };
}

test('a photo of the library is chosen by its name; a file that is not a photo says why', async () => {
  const { page, context, chosen, trouble } = await openPhotos();
  await page.getByRole('button', { name: 'forest.png' }).click();
  await eventually(() => chosen().length === 1, 'the photo is chosen');
  assert.deepEqual(chosen(), ['forest.png']);
  assert.equal(await page.getByRole('button', { name: 'notes.txt: The file is not a PNG or JPEG picture.' }).isDisabled(), true);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a picture from the disk is uploaded and chosen by the name that the server returns', async () => {
  const uploads = [];
  const { page, context, chosen, trouble } = await openPhotos({}, {
    upload: (route) => {
      uploads.push(route.request());
      return route.fulfill({ json: { name: 'sent/1' } });
    },
  });
  await page.locator('input[type="file"]').setInputFiles({ name: 'mine.png', mimeType: 'image/png', buffer: png });
  await eventually(() => chosen().length === 1, 'the picture is chosen');
  assert.deepEqual(chosen(), ['sent/1']);
  assert.equal(uploads[0].method(), 'POST');
  assert.deepEqual(uploads[0].postDataBuffer(), png);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a file dropped on the picker is uploaded; a refusal says why', async () => {
  const { page, context, chosen } = await openPhotos({}, {
    upload: (route) => route.fulfill({ status: 422, json: { message: 'The file is not a PNG or JPEG picture.' } }),
  });
  const data = await page.evaluateHandle(() => {
    const transfer = new DataTransfer();
    transfer.items.add(new File(['no picture'], 'notes.txt', { type: 'text/plain' }));
    return transfer;
  });
  await page.dispatchEvent('.image-picker', 'dragover', { dataTransfer: data });
  await page.locator('.drop-here').waitFor();
  await page.dispatchEvent('.image-picker', 'drop', { dataTransfer: data });
  await page.getByRole('alert').getByText('The file is not a PNG or JPEG picture.').waitFor();
  assert.equal(await page.locator('.drop-here').count(), 0);
  assert.deepEqual(chosen(), []);
  await context.close();
});

test('a busy picker is dimmed, shows a spinner, and accepts no other picture', async () => {
  const { page, context } = await openPhotos({
    busy: true, frame: [0, 0, 390, 844],
    layers: (b) => [
      b.add({ kind: 'activity', animating: true, frame: [177, 404, 37, 37], animation: { id: 1, duration: 0.3, kind: 'change' } }),
      b.add({ kind: 'view', background: { name: 'blackColor' }, alpha: 0.5, frame: [0, 0, 390, 844], animation: { id: 1, duration: 0.3, kind: 'change' } }),
    ],
  });
  await page.getByRole('progressbar', { name: 'Busy' }).waitFor();
  assert.equal(await page.getByRole('button', { name: 'beach.jpg' }).isDisabled(), true);
  // The sheet slides in from below.
  await eventually(async () => {
    const sheet = await page.locator('.image-picker').boundingBox();
    const spinner = await page.getByRole('progressbar').boundingBox();
    return Math.abs(spinner.y + spinner.height / 2 - sheet.y - sheet.height / 2) < 2;
  }, 'it is in the middle');
  await eventually(() => page.locator('.sheet-layers > .view').last().evaluate((view) => getComputedStyle(view).opacity === '0.5'), 'the picker is dimmed');
  await page.getByRole('button', { name: 'Cancel' }).isEnabled();
  await context.close();
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: pickers, ${appearance}`, async () => {
    const options = { device: { appearance }, reducedMotion: 'reduce' };
    const colours = await openPicker({ color: { rgba: [0.2, 0.5, 0.9, 1] }, alpha: true }, options);
    for (const way of ['Grid', 'Spectrum', 'Sliders']) {
      await colours.page.getByRole('tab', { name: way }).click();
      await assertAccessible(colours.page, way);
    }
    await colours.context.close();
    const library = await openPhotos({}, { ...options, upload: (route) => route.fulfill({ status: 413, json: { message: 'The file is larger than 64 MiB.' } }) });
    await library.page.locator('input[type="file"]').setInputFiles({ name: 'mine.png', mimeType: 'image/png', buffer: png });
    await library.page.getByRole('alert').waitFor();
    await assertAccessible(library.page, 'the photos');
    await library.context.close();
  });
}
