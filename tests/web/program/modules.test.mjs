import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { drag, middle } from '../support/drag.mjs';
import { eventually } from '../support/eventually.mjs';
import { openAll } from '../support/program.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const prefix = 'com.hollowmere.ZentrovaModule.';
const pinned = `${prefix}ConnectivityModule,${prefix}GroupedTogglesModule`;

/** Opens a page that a row of the root page leads to. */
async function openPage(identifier, options) {
  const opened = await openAll(browser, options);
  const { page, row, device } = opened;
  await row(identifier).scrollIntoViewIfNeeded();
  await row(identifier).getByRole('button').click();
  await page.locator('.table-scroll.editing .editing-control').first().waitFor();
  await eventually(async () => (await page.locator('.page.ghost').count()) === 0, 'the root page has left');
  const shown = () => page.locator('.page:not(.ghost) .section').evaluateAll((sections) => sections.map((section) =>
    [...section.querySelectorAll('.rows > .row:not(.ghost)')].map((each) => each.querySelector('.text')?.textContent)));
  const handle = (title) => page.getByRole('button', { name: new RegExp(`^Move ${title}`) });
  const rowOf = (title) => page.locator('.page:not(.ghost) .rows > .row:not(.ghost)', { hasText: title });
  const said = (text) => eventually(async () => (await page.locator('[data-live]').textContent()).trim() === text, `"${text}" is said`);
  const landed = () => eventually(async () => (await page.locator('.carry-layer > *').count()) === 0, 'the row has landed');
  const stored = async (key) => (await device.read().catch(() => ({})))[key]?.[1];
  return { ...opened, shown, handle, rowOf, said, landed, stored };
}

test('modules are arranged by dragging, and the file has their order', async () => {
  const { page, handle, rowOf, shown, said, landed, stored, trouble, close } = await openPage('arrangeModules');
  assert.deepEqual(await shown(), [['Connectivity & favorites modules', 'Brightness', 'Audio', 'Media'], ['Power module']]);
  await drag(page, handle('Media'), rowOf('Brightness'));
  await said('Media is now 2 of 4 in Enabled modules');
  await landed();
  assert.deepEqual(await stored('moduleConfig'), [pinned, `${prefix}MediaModule`, `${prefix}DisplaySliderModule`, `${prefix}AudioSliderModule`]);
  await drag(page, handle('Power module'), rowOf('Connectivity'));
  await said('Power module is now 1 of 5 in Enabled modules');
  await landed();
  assert.equal((await stored('moduleConfig'))[0], `${prefix}PowerModule`);
  assert.deepEqual((await shown())[1], []);
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

test('the pinned module goes back visibly when it is dragged away, and nothing is written', async () => {
  const { page, handle, rowOf, shown, said, landed, stored, trouble, close } = await openPage('arrangeModules');
  const before = await shown();
  const { y } = await middle(rowOf('Power module'));
  await drag(page, handle('Connectivity'), y + 10 - (await middle(handle('Connectivity'))).y);
  await said('Connectivity & favorites modules stays where it is');
  await landed();
  await page.getByRole('button', { name: 'Remove Connectivity' }).click();
  await said('Connectivity & favorites modules stays where it is');
  assert.deepEqual(await shown(), before);
  assert.equal(await stored('moduleConfig'), undefined);
  assert.deepEqual(trouble, []);
  await close();
});

test('modules are arranged by keyboard, with what is done read aloud', async () => {
  const { page, handle, said, stored, close } = await openPage('arrangeModules');
  await handle('Audio').focus();
  await page.keyboard.press('Space');
  await said('Audio picked up, 3 of 4 in Enabled modules. Arrow keys move it, Space puts it down, Escape takes it back.');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowDown');
  await said('1 of 2 in Disabled modules');
  await page.keyboard.press('Enter');
  await said('Audio is now 1 of 2 in Disabled modules');
  assert.deepEqual(await stored('moduleConfig'), [pinned, `${prefix}DisplaySliderModule`, `${prefix}MediaModule`]);
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Move Audio'), 'the focus is on the row');
  await close();
});

test('modules are arranged by single clicks; the order is still there on a second visit', async () => {
  const { page, row, handle, shown, said, stored, close } = await openPage('arrangeModules');
  await page.getByRole('button', { name: 'Insert Power module' }).click();
  await said('Power module is now 5 of 5 in Enabled modules');
  await handle('Power module').click();
  await page.getByRole('menuitem', { name: 'Move up', exact: true }).click();
  await said('Power module is now 4 of 5 in Enabled modules');
  await page.getByRole('button', { name: 'Remove Brightness' }).click();
  await said('Brightness is now 1 of 1 in Disabled modules');
  assert.deepEqual((await stored('moduleConfig')).slice(1), [`${prefix}AudioSliderModule`, `${prefix}PowerModule`, `${prefix}MediaModule`]);
  const arranged = await shown();
  await page.locator('.bar .back').click();
  await row('arrangeModules').getByRole('button').click();
  await page.locator('.editing-control').first().waitFor();
  await eventually(async () => JSON.stringify(await shown()) === JSON.stringify(arranged), 'the page is as it was left');
  await close();
});

test('rows with settings open them in the midst of editing', async () => {
  const { page, rowOf, trouble, close } = await openPage('arrangeModules');
  assert.equal(await page.locator('.page:not(.ghost) .row .icon-disclosure').count(), 3);
  await rowOf('Media').getByRole('button', { name: 'Media', exact: true }).click();
  await page.locator('.page:not(.ghost) .table-scroll:not(.editing) .row').first().waitFor();
  await page.locator('.bar .back').click();
  await page.locator('.page:not(.ghost) .table-scroll.editing').waitFor();
  assert.deepEqual(trouble, []);
  await close();
});

/** The preference file before the page is opened. */
const favourites = (...identifiers) => ({ prepare: (device) => device.writePlist(device.file, { groupedIdentifiers: identifiers }) });


test('a favourite is dragged in, is refused as the fifth, and is dragged out', async () => {
  const probe = await openPage('favoriteModules', favourites('x.a', 'x.b', 'x.c'));
  const { page, handle, rowOf, shown, said, landed, stored, device, trouble, close } = probe;
  const [active, available] = await shown();
  assert.deepEqual(active, ['x.a (not installed)', 'x.b (not installed)', 'x.c (not installed)']);
  assert.ok(available.length > 10);
  const [first, second] = available;
  await drag(page, handle(first), rowOf('x.b'));
  await said(`${first} is now 2 of 4 in Active modules (min 3, max 4)`);
  await landed();
  const grouped = await stored('groupedIdentifiers');
  assert.deepEqual([grouped[0], grouped[2], grouped[3]], ['x.a', 'x.b', 'x.c']);

  await drag(page, handle(second), rowOf('x.a'));
  await said(`${second} stays where it is`);
  await landed();
  assert.deepEqual(await stored('groupedIdentifiers'), grouped);

  await page.getByRole('button', { name: 'Remove x.c' }).click();
  await said('x.c (not installed) was removed');
  assert.deepEqual(await stored('groupedIdentifiers'), grouped.slice(0, 3));
  await page.getByRole('button', { name: 'Remove x.b' }).click();
  await eventually(async () => (await shown())[0].length === 2, 'two are shown');
  assert.deepEqual(await stored('groupedIdentifiers'), grouped.slice(0, 3), 'fewer than three are not stored');
  await page.getByRole('button', { name: `Insert ${second}`, exact: true }).click();
  await eventually(async () => (await stored('groupedIdentifiers'))?.length === 3, 'three are stored again');
  assert.ok((await device.configuration())['module-identifiers'].includes(grouped[1]));
  assert.deepEqual(trouble, []);
  await close();
});

test('available modules bear their names and icons', async () => {
  const { page, shown, close } = await openPage('favoriteModules', favourites('x.a'));
  const [, available] = await shown();
  const named = available.filter((title) => title !== undefined);
  assert.ok(named.length > 5);
  await page.locator('.section').nth(1).locator('.cell-image').first().waitFor();
  await eventually(() => page.locator('.section').nth(1).locator('img.cell-image').first().evaluate((image) => image.complete && image.naturalWidth > 0), 'the icon is there');
  await close();
});

test('a thousand installed modules scroll and are dragged through', async () => {
  const { page, shown, said, landed, device, trouble, close } = await openPage('favoriteModules', {
    prepare: async (made) => {
      await made.writePlist(made.file, { groupedIdentifiers: ['x.a', 'x.b', 'x.c'] });
      await made.installModules(1000);
    },
  });
  const rows = page.locator('.page:not(.ghost) .row');
  assert.ok((await rows.count()) < 150, 'rows out of sight are not in the document');
  const scroller = page.locator('.page:not(.ghost) .table-scroll');
  await scroller.evaluate((element) => { element.scrollTop = element.scrollHeight; });
  const last = page.locator('.section').nth(1).locator('.row').last();
  await eventually(async () => (await last.locator('.text').count()) === 1, 'the last row has its name');
  await last.locator('.reorder').click();
  await page.getByRole('menuitem', { name: 'Move to Active modules (min 3, max 4)' }).click();
  await eventually(async () => (await shown())[0].length === 4, 'it is the fourth favourite');
  const grouped = (await device.read()).groupedIdentifiers[1];
  assert.equal(grouped.length, 4);
  const handle = await page.locator('.section').first().locator('.reorder').last().boundingBox();
  const screen = await page.locator('.screen').boundingBox();
  await page.mouse.move(handle.x + handle.width / 2, handle.y + handle.height / 2);
  await page.mouse.down();
  await page.mouse.move(handle.x + handle.width / 2, screen.y + screen.height - 8, { steps: 4 });
  await eventually(() => scroller.evaluate((element) => element.scrollTop + element.clientHeight >= element.scrollHeight - 2), 'the end is reached', 60_000);
  await page.mouse.up();
  await landed();
  await eventually(async () => (await device.read()).groupedIdentifiers[1].length === 3, 'it is no favourite any more');
  assert.match(await page.locator('[data-live]').textContent(), /is now \d+ of \d+ in Available modules/);
  assert.ok(said);
  assert.deepEqual(trouble, []);
  await close();
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: both pages, ${appearance}`, async () => {
    for (const identifier of ['arrangeModules', 'favoriteModules']) {
      const { page, trouble, close } = await openPage(identifier, { serveOptions: ['--appearance', appearance], reducedMotion: 'reduce', ...favourites('x.a', 'x.b', 'x.c') });
      await assertAccessible(page, identifier);
      assert.deepEqual(trouble, []);
      await close();
    }
  });
}
