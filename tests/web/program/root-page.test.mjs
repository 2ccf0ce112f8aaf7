import assert from 'node:assert/strict';
import { writeFile } from 'node:fs/promises';
import { test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { eventually } from '../support/eventually.mjs';
import { useProgram } from '../support/whole.mjs';

const { fresh, open, openNext } = useProgram();

const radio = (row, index) => row.getByRole('radio').nth(index);
const isSelected = async (row, index) => eventually(async () => (await radio(row, index).getAttribute('aria-checked')) === 'true', `segment ${index} is selected`);

/** Scrolls a row into view as a finger does; a hidden row has no control. */
async function reveal(row) {
  await row.scrollIntoViewIfNeeded();
  await row.locator('.cell').waitFor();
  return row;
}

/** The identifiers of the shown rows, in their order. */
const identifiers = (page) => page.locator('.page:not(.ghost) .row:not(.ghost)').evaluateAll((rows) => rows.map((row) => row.dataset.identifier));

test('the presentation style shows both switches in their order, and the settings are in the file', async () => {
  const { page, row, device, trouble } = await fresh();
  await radio(row('presentationStyle'), 1).click();
  await page.getByRole('switch', { name: 'Reverse module order' }).waitFor();
  const shown = await identifiers(page);
  const style = shown.indexOf('presentationStyle');
  assert.deepEqual(shown.slice(style, style + 3), ['presentationStyle', 'alwaysPresentFromTop', 'reverseWhenTopPresented']);
  await page.getByRole('switch', { name: 'Always present from top', checked: false }).waitFor();
  await page.getByRole('switch', { name: 'Reverse module order', checked: false }).click();
  await page.getByRole('switch', { name: 'Reverse module order', checked: true }).waitFor();
  const file = await device.read();
  assert.deepEqual(file.presentationStyle, ['int', 1]);
  assert.deepEqual(file.reverseWhenTopPresented, ['bool', true]);
  assert.equal(file.alwaysPresentFromTop, undefined);

  await radio(row('presentationStyle'), 0).click();
  await page.getByRole('switch', { name: 'Reverse module order' }).waitFor({ state: 'detached' });
  assert.deepEqual((await device.read()).presentationStyle, ['int', 0]);
  assert.deepEqual(trouble, []);
});

test('the pane beside the phone shows the file and what the last tap changed in it', async () => {
  const { page, row } = await fresh();
  await page.locator('.entries tr[data-key="groupedIdentifiers"]').waitFor();
  await radio(row('presentationStyle'), 1).click();
  const change = page.locator('.last-change');
  await change.getByText('presentationStyle').waitFor();
  assert.equal(await change.locator('.before').textContent(), 'none');
  assert.equal(await change.locator('.after').textContent(), '1');
  assert.equal((await page.locator('.entries tr.changed[data-key="presentationStyle"] .value').textContent()).trim(), '1');
  await row('presentFullyExpanded').getByRole('switch').click();
  await change.getByText('presentFullyExpanded').waitFor();
  assert.equal(await page.locator('.entries tr.changed').count(), 1);
});

test('the restart row starts the stand-in, says so, and lists the program without an environment', async () => {
  const { page, row, trouble, close } = await open();
  await row('respring').getByRole('button').click();
  await page.getByRole('status').getByText('The home screen restarted').waitFor();
  await page.locator('.pane-programs .command').first().waitFor();
  assert.match(await page.locator('.pane-programs .command').first().textContent(), /^\/var\/jb\/usr\/bin\/(sbreload|killall)/);
  await page.locator('.pane-programs').getByText('no environment').first().waitFor();
  await page.locator('.pane-programs').getByText('The home screen restarted.').waitFor();
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

test('slider, text, passcode and choice are written with their types', async () => {
  const { page, row, device, trouble } = await fresh();
  await (await reveal(row('backgroundBlur'))).getByRole('slider').focus();
  await page.keyboard.press('Home');
  await eventually(async () => (await device.read().catch(() => ({}))).backgroundBlur?.[1] === 0, 'the slider is in the file');
  assert.equal((await device.read()).backgroundBlur[0], 'float');

  await (await reveal(row('moduleMaterial'))).getByRole('button').click();
  await page.getByRole('button', { name: 'Thick' }).click();
  await eventually(async () => (await device.read()).moduleMaterial?.[1] === 'thick', 'the choice is in the file');
  await page.locator('.bar .back').click();
  await row('moduleMaterial').getByText('Thick').waitFor();

  const fields = page.locator('.page:not(.ghost) .text-field');
  await page.locator('.page:not(.ghost) .table-scroll').evaluate((scroller) => { scroller.scrollTop = scroller.scrollHeight; });
  await fields.first().waitFor();
  const count = await fields.count();
  for (let index = 0; index < count; index += 1) {
    await fields.nth(index).click();
    await page.keyboard.press('Control+a');
    await page.keyboard.type('Ä "test"');
    await page.keyboard.press('Enter');
  }
  await eventually(async () => Object.values(await device.read()).filter(([, value]) => value === 'Ä "test"').length === count, 'every text is in the file');
  assert.ok(count > 0);
  assert.deepEqual(trouble, []);
});

test('every switch, segment and slider of the page takes a touch', async () => {
  const { page, device, trouble, close } = await open({ viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true });
  for (const name of await page.locator('.row:has(.switch:enabled)').evaluateAll((rows) => rows.map((row) => row.dataset.identifier))) {
    const control = page.locator(`.row[data-identifier="${name}"] .switch`);
    const before = await control.getAttribute('aria-checked');
    await control.tap();
    await eventually(async () => (await control.getAttribute('aria-checked')) !== before, `${name} is switched`);
  }
  const row = (name) => page.locator(`.row[data-identifier="${name}"]`);
  await radio(row('gestureSegmentCell'), 2).tap();
  await isSelected(row('gestureSegmentCell'), 2);
  await (await reveal(row('cornerRadius'))).getByRole('slider').tap({ position: { x: 30, y: 10 } });
  await eventually(async () => (await device.read()).cornerRadius !== undefined, 'the slider is in the file');
  assert.deepEqual((await device.read()).gestureCorner, ['int', 2]);
  assert.deepEqual(trouble, []);
  await close();
});

test('the pane reports a damaged preference file, and the page still works', async () => {
  const { page, row, device, close } = await open({ prepare: (made) => writeFile(made.file, '<plist><dict><key>a</key>') });
  await page.locator('.file-problem').waitFor();
  await page.locator('.pane-file').getByText('Damaged').waitFor();
  await radio(row('presentationStyle'), 1).click();
  await page.locator('.last-change').getByText('presentationStyle').waitFor();
  assert.deepEqual((await device.read()).presentationStyle, ['int', 1]);
  await close();
});

test('a file that another program changes is shown without a tap', async () => {
  const { page, device } = await fresh();
  await device.writePlist(device.file, { fromOutside: 7 });
  await page.locator('.entries tr[data-key="fromOutside"]').getByText('7').waitFor();
});

test('if Kestrelle handles the gestures, the row is locked, dimmed, and shows the first segment', async () => {
  const { page, row, device, trouble, close } = await open({
    prepare: async (made) => {
      await made.writePlist(made.kestrelle, { gesturesConfig: '2', useGestures: true });
      await made.writePlist(made.file, { gestureCorner: 3 });
    },
  });
  await page.getByText('Using gesture settings from Kestrelle as they are set to either "Lower" or "Both".').waitFor();
  await eventually(() => row('gestureSegmentCell').locator('.cell').evaluate((cell) => getComputedStyle(cell).opacity === '0.6'), 'the cell is dimmed');
  await isSelected(row('gestureSegmentCell'), 0);
  await radio(row('gestureSegmentCell'), 1).click({ force: true });
  await row('presentFullyExpanded').getByRole('switch').click();
  await eventually(async () => (await device.read()).presentFullyExpanded !== undefined, 'another row is written');
  assert.deepEqual((await device.read()).gestureCorner, ['int', 3]);
  assert.deepEqual(trouble, []);
  await close();
});

test('two windows show the same, and each keeps its own focus', async () => {
  const { page, row, server, trouble, close } = await open();
  const cookies = await page.context().cookies();
  const other = await openNext(server.address);
  await other.row('presentFullyExpanded').getByRole('switch').focus();
  await radio(row('presentationStyle'), 1).click();
  await other.page.getByRole('switch', { name: 'Reverse module order' }).waitFor();
  assert.equal(await other.row('presentFullyExpanded').getByRole('switch').evaluate((control) => document.activeElement === control), true);
  await other.page.getByRole('switch', { name: 'Reverse module order' }).click();
  await page.getByRole('switch', { name: 'Reverse module order', checked: true }).waitFor();
  assert.ok(cookies.length > 0);
  assert.deepEqual([...trouble, ...other.trouble], []);
  await other.context.close();
  await close();
});

test('on the tablet the presentation and gesture rows are absent', async () => {
  const { page, row, trouble, close } = await open({ serveOptions: ['--idiom', 'pad', '--screen', '820x1180@2'] });
  await row('enabled').waitFor();
  const shown = await identifiers(page);
  for (const name of ['presentationText', 'presentationStyle', 'presentFullyExpanded', 'gestureText', 'gestureSegmentCell']) {
    assert.ok(!shown.includes(name), name);
  }
  assert.deepEqual(trouble, []);
  await close();
});

test('the device\'s traits change while it runs', async () => {
  const { page, row, trouble, close } = await open();
  const trait = (name) => page.locator(`[data-trait="${name}"]`);
  await trait('appearance').selectOption('dark');
  await page.locator('.layout[data-appearance="dark"]').waitFor();
  const before = await row('enabled').locator('.text').evaluate((text) => getComputedStyle(text).fontSize);
  await trait('text').selectOption('1.65');
  await eventually(async () => (await row('enabled').locator('.text').evaluate((text) => getComputedStyle(text).fontSize)) !== before, 'the text grows');
  await trait('idiom').selectOption('pad');
  await trait('screen').selectOption('820x1180@2');
  await page.locator('.device.pad').waitFor();
  assert.deepEqual(trouble, []);
  await close();
});

for (const appearance of ['light', 'dark']) {
  test(`the root page has no barriers: ${appearance}`, async () => {
    const { page, row, trouble } = await fresh({ appearance });
    await radio(row('presentationStyle'), 1).click();
    await page.getByRole('switch', { name: 'Reverse module order' }).waitFor();
    await assertAccessible(page, 'the root page');
    assert.deepEqual(trouble, []);
  });
}

test('when the server ends, the page says so and keeps its content', async () => {
  const { page, row, server, device, context } = await open();
  await row('enabled').waitFor();
  assert.equal(await server.stop(), 0);
  await page.getByRole('alert').getByText('The connection is lost.').waitFor();
  assert.ok(await row('enabled').isVisible());
  await context.close();
  await device.dispose();
});
