import assert from 'node:assert/strict';
import { test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { drag, dragByFinger, middle } from '../support/drag.mjs';
import { becomes, eventually, still } from '../support/eventually.mjs';
import { useProgram } from '../support/whole.mjs';

const { fresh, open } = useProgram();

const prefix = 'com.hollowmere.ZentrovaModule.';
const pinned = `${prefix}ConnectivityModule,${prefix}GroupedTogglesModule`;
const module = (name) => `${prefix}${name}Module`;
const flashlight = 'com.apple.control-center.FlashlightModule';
const timer = 'com.apple.mobiletimer.controlcenter.timer';
const calculator = 'com.apple.control-center.CalculatorModule';
const camera = 'com.apple.control-center.CameraModule';
const active = 'Active modules (min 3, max 4)';
const phone = { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true };

/** Opens the page behind a row of the root page, and returns what it shows. */
async function goTo(identifier, opened) {
  const { page, row, device } = opened;
  await row(identifier).scrollIntoViewIfNeeded();
  await row(identifier).getByRole('button').click();
  await page.locator('.page:not(.ghost) .table-scroll.editing .editing-control').first().waitFor();
  await still(page);
  const shown = () => page.locator('.page:not(.ghost) .section').evaluateAll((sections) => sections.map((section) =>
    [...section.querySelectorAll('.rows > .row:not(.ghost)')].map((each) => each.querySelector('.text')?.textContent)));
  const handle = (title) => page.getByRole('button', { name: new RegExp(`^Move ${title}`) });
  const rowOf = (title) => page.locator('.page:not(.ghost) .rows > .row:not(.ghost)', { hasText: title });
  const live = async () => (await page.locator('[data-live]').textContent()).trim();
  const said = (text) => becomes(live, text, 'it is announced');
  const landed = () => eventually(async () => (await page.locator('.carry-layer > *').count()) === 0, 'the row has landed');
  const stored = async (key) => (await device.read())[key]?.[1];
  const focused = () => page.evaluate(() => document.activeElement.getAttribute('aria-label'));
  return { ...opened, shown, handle, rowOf, live, said, landed, stored, focused };
}

const openShared = async (identifier, wanted) => goTo(identifier, await fresh(wanted));
const moving = { reducedMotion: 'no-preference' };

test('modules are arranged by dragging with the mouse, and the file has their order', async () => {
  const { page, handle, rowOf, shown, said, landed, stored, trouble } = await openShared('arrangeModules', moving);
  assert.deepEqual(await shown(), [['Connectivity & favorites modules', 'Brightness', 'Audio', 'Media'], ['Power module']]);
  await drag(page, handle('Media'), rowOf('Brightness'), { over: () => said('2 of 4 in Enabled modules') });
  await said('Media is now 2 of 4 in Enabled modules');
  await landed();
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('Media'), module('DisplaySlider'), module('AudioSlider')]);
  await drag(page, handle('Power module'), rowOf('Brightness'), { over: () => said('3 of 5 in Enabled modules') });
  await said('Power module is now 3 of 5 in Enabled modules');
  await landed();
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('Media'), module('Power'), module('DisplaySlider'), module('AudioSlider')]);
  assert.deepEqual(await shown(), [['Connectivity & favorites modules', 'Media', 'Power module', 'Brightness', 'Audio'], []]);
  assert.deepEqual(trouble, []);
});

test('modules are arranged by a finger on their handles', async () => {
  const { page, handle, rowOf, said, landed, stored, trouble, close } = await goTo('arrangeModules', await open(phone));
  await dragByFinger(page, handle('Audio'), rowOf('Brightness'), { over: () => said('2 of 4 in Enabled modules') });
  await said('Audio is now 2 of 4 in Enabled modules');
  await landed();
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('AudioSlider'), module('DisplaySlider'), module('Media')]);
  await page.getByRole('button', { name: 'Remove Brightness' }).tap();
  await said('Brightness is now 2 of 2 in Disabled modules');
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('AudioSlider'), module('Media')]);
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

/** Records where pictures of dropped rows move to, as distances from the table's top. */
async function watchFlights(page) {
  await page.evaluate(() => {
    globalThis.flights = [];
    const animate = Element.prototype.animate;
    Element.prototype.animate = function (frames, options) {
      if (this.parentElement?.className === 'carry-layer') globalThis.flights.push(new DOMMatrix(frames.at(-1).transform).f);
      return animate.call(this, frames, options);
    };
  });
  return () => page.evaluate(() => globalThis.flights);
}

test('the pinned module goes back visibly when it is dragged away, and nothing is written', async () => {
  const { page, handle, rowOf, shown, said, landed, stored, trouble } = await openShared('arrangeModules', moving);
  const before = await shown();
  const flights = await watchFlights(page);
  await drag(page, handle('Connectivity'), rowOf('Power module'), { over: () => eventually(async () => (await shown())[1].length === 2, 'it is over the other section') });
  await said('Connectivity & favorites modules stays where it is');
  await landed();
  const [flight, ...more] = await flights();
  assert.deepEqual(more, []);
  const top = await rowOf('Connectivity').evaluate((row) => {
    const scroller = row.closest('.table-scroll');
    const { top: edge, height } = scroller.getBoundingClientRect();
    return ((row.getBoundingClientRect().top - edge) * scroller.clientHeight) / height;
  });
  assert.ok(Math.abs(flight - top) < 1, `it moves to ${flight}, and is at ${top}`);
  assert.equal(await rowOf('Connectivity').evaluate((row) => getComputedStyle(row).opacity), '1');
  assert.deepEqual(await shown(), before);
  await page.getByRole('button', { name: 'Remove Connectivity' }).click();
  await said('Connectivity & favorites modules stays where it is');
  assert.deepEqual(await shown(), before);
  assert.equal(await stored('moduleConfig'), undefined);
  assert.deepEqual(trouble, []);
});

test('modules are arranged by keyboard, and each step is announced', async () => {
  const { page, handle, shown, said, stored, focused, trouble } = await openShared('arrangeModules');
  await handle('Audio').focus();
  await page.keyboard.press('Space');
  await said('Audio picked up, 3 of 4 in Enabled modules. Arrow keys move it, Space puts it down, Escape takes it back.');
  await page.keyboard.press('ArrowDown');
  await said('4 of 4 in Enabled modules');
  await page.keyboard.press('ArrowDown');
  await said('1 of 2 in Disabled modules');
  assert.equal(await stored('moduleConfig'), undefined, 'nothing is stored before it is dropped');
  await page.keyboard.press('Space');
  await said('Audio is now 1 of 2 in Disabled modules');
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('DisplaySlider'), module('Media')]);
  await eventually(async () => (await focused()) === 'Move Audio', 'the focus is on the row');
  await page.keyboard.press('Space');
  await said('Audio picked up, 1 of 2 in Disabled modules. Arrow keys move it, Space puts it down, Escape takes it back.');
  await page.keyboard.press('ArrowUp');
  await said('4 of 4 in Enabled modules');
  await page.keyboard.press('Escape');
  await said('Audio is back at 1 of 2 in Disabled modules');
  await eventually(async () => (await shown())[1].join() === 'Audio,Power module', 'the row is back');
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('DisplaySlider'), module('Media')]);
  assert.deepEqual(trouble, []);
});

test('the pinned module goes back when it is moved by keyboard, and keeps the focus', async () => {
  const { page, handle, shown, said, stored, focused } = await openShared('arrangeModules');
  const before = await shown();
  await handle('Connectivity').focus();
  await page.keyboard.press('Space');
  await page.keyboard.press('End');
  await page.keyboard.press('ArrowDown');
  await said('1 of 2 in Disabled modules');
  await page.keyboard.press('Space');
  await said('Connectivity & favorites modules stays where it is');
  await eventually(async () => JSON.stringify(await shown()) === JSON.stringify(before), 'the row is back');
  await eventually(async () => (await focused()) === 'Move Connectivity & favorites modules', 'the focus is on the row');
  assert.equal(await stored('moduleConfig'), undefined);
});

test('modules are arranged by single clicks; a second visit shows the same order', async () => {
  const { page, row, handle, shown, said, stored, trouble } = await openShared('arrangeModules');
  assert.equal(await page.locator('.editing-control.delete').count(), 4);
  assert.equal(await page.locator('.editing-control.insert').count(), 1);
  await page.getByRole('button', { name: 'Insert Power module' }).click();
  await said('Power module is now 5 of 5 in Enabled modules');
  await handle('Power module').click();
  await page.getByRole('menuitem', { name: 'Move up', exact: true }).click();
  await said('Power module is now 4 of 5 in Enabled modules');
  await page.getByRole('button', { name: 'Remove Brightness' }).click();
  await said('Brightness is now 1 of 1 in Disabled modules');
  assert.deepEqual(await stored('moduleConfig'), [pinned, module('AudioSlider'), module('Power'), module('Media')]);
  const arranged = [['Connectivity & favorites modules', 'Audio', 'Power module', 'Media'], ['Brightness']];
  assert.deepEqual(await shown(), arranged);
  await page.locator('.bar .back').click();
  await row('arrangeModules').getByRole('button').click();
  await page.locator('.editing-control').first().waitFor();
  await eventually(async () => JSON.stringify(await shown()) === JSON.stringify(arranged), 'the page is as it was left');
  assert.deepEqual(trouble, []);
});

test('rows with settings open them during editing', async () => {
  const { page, rowOf, trouble } = await openShared('arrangeModules');
  assert.equal(await page.locator('.page:not(.ghost) .row .icon-disclosure').count(), 3);
  await rowOf('Media').getByRole('button', { name: 'Media', exact: true }).click();
  await page.locator('.page:not(.ghost) .table-scroll:not(.editing) .row').first().waitFor();
  await page.locator('.bar .back').click();
  await page.locator('.page:not(.ghost) .table-scroll.editing').waitFor();
  assert.deepEqual(trouble, []);
});

test('favourites are reordered, and the file has the new order', async () => {
  const { page, handle, rowOf, shown, said, landed, stored, trouble } = await openShared('favoriteModules');
  assert.deepEqual((await shown())[0], ['Flashlight', 'Timer', 'Calculator', 'Camera']);
  await drag(page, handle('Camera'), rowOf('Timer'), { over: () => said(`2 of 4 in ${active}`) });
  await said(`Camera is now 2 of 4 in ${active}`);
  await landed();
  assert.deepEqual(await stored('groupedIdentifiers'), [flashlight, camera, timer, calculator]);
  await handle('Flashlight').focus();
  await page.keyboard.press('Space');
  await page.keyboard.press('End');
  await said(`4 of 4 in ${active}`);
  await page.keyboard.press('Enter');
  await said(`Flashlight is now 4 of 4 in ${active}`);
  assert.deepEqual(await stored('groupedIdentifiers'), [camera, timer, calculator, flashlight]);
  assert.deepEqual(trouble, []);
});

test('a favourite is dragged in, the fifth is refused, and fewer than three are not stored', async () => {
  const opened = await openShared('favoriteModules', { settings: { groupedIdentifiers: [flashlight, timer, calculator] } });
  const { page, handle, rowOf, shown, said, landed, stored, device, trouble } = opened;
  const first = (await shown())[1][0];
  await drag(page, handle(first), rowOf('Timer'), { over: () => said(`2 of 4 in ${active}`) });
  await said(`${first} is now 2 of 4 in ${active}`);
  await landed();
  const four = await stored('groupedIdentifiers');
  assert.deepEqual([four[0], four[2], four[3]], [flashlight, timer, calculator]);
  assert.ok((await device.configuration())['module-identifiers'].includes(four[1]), 'Control Center loads the module');

  const fifth = (await shown())[1][0];
  await drag(page, handle(fifth), rowOf('Timer'), { over: () => eventually(async () => (await shown())[0].length === 5, 'it is over the favourites') });
  await said(`${fifth} stays where it is`);
  await landed();
  await page.getByRole('button', { name: `Insert ${fifth}`, exact: true }).click();
  await said(`${fifth} stays where it is`);
  assert.deepEqual(await stored('groupedIdentifiers'), four);

  for (const [left, title] of [[3, first], [2, 'Timer']]) {
    await page.getByRole('button', { name: `Remove ${title}`, exact: true }).click();
    await eventually(async () => (await shown())[0].length === left, `${left} are shown`);
    assert.deepEqual(await stored('groupedIdentifiers'), [flashlight, timer, calculator]);
  }
  await page.getByRole('button', { name: `Insert ${fifth}`, exact: true }).click();
  await said(`${fifth} is now 3 of 3 in ${active}`);
  const three = await stored('groupedIdentifiers');
  assert.deepEqual(three.slice(0, 2), [flashlight, calculator]);
  assert.deepEqual(trouble, []);
});

test('favourites that are not installed say so, and can be removed', async () => {
  const { page, shown, said, stored } = await openShared('favoriteModules', { settings: { groupedIdentifiers: ['x.a', flashlight, timer, calculator] } });
  assert.equal((await shown())[0][0], 'x.a (not installed)');
  await page.getByRole('button', { name: 'Remove x.a' }).click();
  await said('x.a (not installed) was removed');
  assert.deepEqual(await stored('groupedIdentifiers'), [flashlight, timer, calculator]);
});

test('without the repository of modules the page says what to do, and with it the modules are back', async () => {
  const { page, row, trouble, close } = await open({ reducedMotion: 'reduce' });
  const note = page.getByText('Nothing here? Please try doing a ldrestart.');
  const openAnew = async () => {
    const before = await page.locator('.page').getAttribute('data-node');
    await page.locator('[data-action="reopen"]').click();
    await page.locator(`.page:not(.ghost, [data-node="${before}"]) .row`).first().waitFor();
    await row('favoriteModules').locator('button.cell').click();
  };
  await page.getByText('Neighbours', { exact: true }).click();
  await page.getByRole('checkbox', { name: 'CCSModuleRepository' }).uncheck();
  await openAnew();
  await note.waitFor();
  await page.getByRole('checkbox', { name: 'CCSModuleRepository' }).check();
  await openAnew();
  await page.getByRole('button', { name: 'Insert Alarm' }).waitFor();
  assert.equal(await note.count(), 0);
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

test('available modules have their names and icons', async () => {
  const { page, shown } = await openShared('favoriteModules');
  assert.ok((await shown())[1].filter((title) => title !== undefined).length > 5);
  const icon = page.locator('.page:not(.ghost) .section').nth(1).locator('img.cell-image').first();
  await eventually(() => icon.evaluate((image) => image.complete && image.naturalWidth > 0), 'the icon is shown');
});

/** The row in the middle of the screen, and the number of rows in the document. */
const inSight = (page) => page.locator('.screen').evaluate((screen) => {
  const { left, top, width, height } = screen.getBoundingClientRect();
  const row = document.elementFromPoint(left + width / 2, top + height / 2)?.closest('.row');
  return { text: row?.querySelector('.text')?.textContent, rows: document.querySelectorAll('.page:not(.ghost) .row').length };
});

test('a thousand installed modules: only visible rows are in the document, and a row is dragged across all', async () => {
  const opened = await open({ prepare: (made) => made.installModules(1000) });
  const { page, handle, shown, said, live, landed, stored, trouble, close } = await goTo('favoriteModules', opened);
  const scroller = page.locator('.page:not(.ghost) .table-scroll');
  const height = await scroller.evaluate((element) => element.scrollHeight);
  assert.ok(height > 1000 * 44, 'there is room for all rows');
  for (const share of [0.5, 1, 0.25, 0]) {
    await scroller.evaluate((element, part) => { element.scrollTop = part * element.scrollHeight; }, share);
    await eventually(async () => (await inSight(page)).text !== undefined, `at ${share} of the scroll range a row is shown with its name`);
    assert.ok((await inSight(page)).rows < 150, 'hidden rows are not in the document');
  }
  assert.equal(await scroller.evaluate((element) => element.scrollHeight), height, 'nothing jumps');

  const screen = await page.locator('.screen').boundingBox();
  const atEnd = () => scroller.evaluate((element) => element.scrollTop + element.clientHeight >= element.scrollHeight - 2);
  const { y } = await middle(handle('Camera'));
  await drag(page, handle('Camera'), screen.y + screen.height - 12 - y, {
    over: async () => {
      await eventually(atEnd, 'the end is reached');
      await said(/ of \d+ in Available modules$/);
      assert.ok((await inSight(page)).rows < 150, 'hidden rows are not in the document');
    },
  });
  await said(/^Camera is now \d+ of 10\d\d in Available modules$/);
  await landed();
  assert.deepEqual(await stored('groupedIdentifiers'), [flashlight, timer, calculator]);
  await scroller.evaluate((element) => { element.scrollTop = 0; });
  await eventually(async () => (await shown())[0].join() === 'Flashlight,Timer,Calculator', 'it is not a favourite any more');

  await handle('Calculator').focus();
  await page.keyboard.press('Space');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Escape');
  await said(`Calculator is back at 3 of 3 in ${active}`);
  assert.deepEqual(trouble, []);
  assert.equal(await close(), 0);
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: both pages, ${appearance}`, async () => {
    const opened = await fresh({ appearance });
    const { page, row, trouble } = opened;
    for (const identifier of ['arrangeModules', 'favoriteModules']) {
      await goTo(identifier, opened);
      await assertAccessible(page, identifier);
      await page.locator('.bar .back').click();
      await row('enabled').waitFor();
    }
    assert.deepEqual(trouble, []);
  });
}
