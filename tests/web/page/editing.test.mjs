import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { drag, middle } from '../support/drag.mjs';
import { eventually } from '../support/eventually.mjs';
import { movableRows } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const enabled = ['Connectivity & favorites modules*', 'Brightness', 'Audio', 'Media*'];
const disabled = ['Power module*', 'Torch'];

async function openRows({ options, ...rules } = {}) {
  const fixture = movableRows(enabled, disabled, rules);
  const opened = await openAlone(browser, fixture.tree, options);
  opened.server.answer(fixture.answer);
  const { page, server } = opened;
  const row = (title) => page.locator('.rows > .row:not(.ghost)', { hasText: title });
  const handle = (title) => page.getByRole('button', { name: new RegExp(`^Move ${title}`) });
  /** The titles in the order of the document, section by section. */
  const shown = () => page.locator('.section').evaluateAll((sections) => sections.map((section) =>
    [...section.querySelectorAll('.rows > .row:not(.ghost) .text')].map((text) => text.textContent)));
  const said = () => page.locator('[data-live]').textContent();
  const moves = () => server.actions.filter(({ action }) => action === 'move').map(({ node, section, index }) => [fixture.tree.nodes[node].title, section, index]);
  const noGhost = () => eventually(async () => (await page.locator('.carry-layer > *').count()) === 0, 'the picture of the row has landed');
  return { ...opened, fixture, row, handle, shown, said, moves, noGhost };
}

const order = (...active) => active.map((title) => title.replace('*', ''));

test('rows have red and green controls, handles, and a chevron if they have settings', async () => {
  const { page, context, trouble, row } = await openRows();
  assert.equal(await page.locator('.editing-control.delete').count(), 4);
  assert.equal(await page.locator('.editing-control.insert').count(), 2);
  assert.equal(await page.locator('.row .reorder').count(), 6);
  assert.equal(await page.locator('.row:has(.icon-disclosure)').count(), 3);
  assert.equal(await row('Brightness').locator('.icon-disclosure').count(), 0);
  const colour = (title) => row(title).locator('.editing-control').evaluate((control) => getComputedStyle(control).color);
  assert.equal(await colour('Brightness'), 'rgb(255, 59, 48)');
  assert.equal(await colour('Torch'), 'rgb(52, 199, 89)');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a row with settings opens them during editing', async () => {
  const { page, context, server } = await openRows();
  await page.getByRole('button', { name: 'Media', exact: true }).click();
  await eventually(() => server.actions.at(-1)?.action === 'tap', 'the tap is sent');
  await context.close();
});

test('the red and the green control send a commit of their row', async () => {
  const { page, context, server, fixture, shown } = await openRows();
  await page.getByRole('button', { name: 'Remove Audio' }).click();
  await eventually(async () => (await shown())[1].at(-1) === 'Audio', 'the row is in the other section');
  assert.deepEqual(server.actions.at(-1).node, fixture.rows[0][2]);
  await page.getByRole('button', { name: 'Insert Torch' }).click();
  await eventually(async () => (await shown())[0].at(-1) === 'Torch', 'the row is the last enabled one');
  await context.close();
});

test('a refused control leaves the row where it is, with the focus on it', async () => {
  const { page, context, server, shown } = await openRows({ accepts: () => false });
  await page.getByRole('button', { name: 'Remove Connectivity' }).press('Enter');
  await eventually(() => server.actions.at(-1)?.action === 'commit', 'the control is sent');
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label')?.startsWith('Remove Connectivity')), 'the focus stays');
  assert.deepEqual((await shown())[0], order(...enabled));
  await context.close();
});

test('after a control was used by keyboard, the row that takes its place gets the focus', async () => {
  const { page, context, shown } = await openRows();
  await page.getByRole('button', { name: 'Remove Brightness' }).focus();
  await page.keyboard.press('Enter');
  await eventually(async () => (await shown())[1].includes('Brightness'), 'the row has moved');
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Remove Audio'), 'the focus is on the next row');
  await context.close();
});

test('the mouse drags a row within its section; the others make room meanwhile', async () => {
  const { page, context, trouble, handle, row, shown, moves, noGhost } = await openRows();
  await drag(page, handle('Brightness'), row('Media'), { release: false });
  await eventually(async () => (await shown())[0].join() === order('Connectivity & favorites modules', 'Audio', 'Media', 'Brightness').join(), 'the others make room');
  assert.deepEqual(moves(), [], 'nothing is sent before the row is dropped');
  const ghost = page.locator('.carry-layer > .row');
  await eventually(async () => Math.abs((await middle(ghost)).y - (await middle(row('Brightness'))).y) < 24, 'the picture of the row is over its gap');
  await page.mouse.up();
  await noGhost();
  assert.deepEqual(moves(), [['Brightness', 0, 3]]);
  assert.deepEqual((await shown())[0], order('Connectivity & favorites modules', 'Audio', 'Media', 'Brightness'));
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the mouse drags a row between the sections, to the place where it is dropped', async () => {
  const { page, context, handle, row, shown, moves, noGhost } = await openRows();
  await drag(page, handle('Torch'), row('Brightness'));
  await noGhost();
  assert.deepEqual(moves(), [['Torch', 0, 1]]);
  assert.deepEqual(await shown(), [order('Connectivity & favorites modules', 'Torch', 'Brightness', 'Audio', 'Media'), ['Power module']]);
  await drag(page, handle('Audio'), row('Power module'));
  await noGhost();
  assert.equal((await shown())[0].includes('Audio'), false);
  await context.close();
});

test('the last row of a section leaves it empty, and comes back into it', async () => {
  const fixture = movableRows(['Only'], ['Other'], {});
  const { page, context, server } = await openAlone(browser, fixture.tree);
  server.answer(fixture.answer);
  const handle = page.getByRole('button', { name: /^Move Only/ });
  await drag(page, handle, page.locator('.row', { hasText: 'Other' }));
  await eventually(() => fixture.lists[0].length === 0, 'the section is empty');
  await eventually(async () => (await page.locator('.carry-layer > *').count()) === 0, 'it has landed');
  await drag(page, handle, -160);
  await eventually(() => fixture.lists[0].length === 1, 'the row is back');
  await context.close();
});

/** The whole drag between two frames of the browser, as on a slow machine. */
const dragAtOnce = (page, handle, goal) => handle.evaluate((element, to) => {
  const { x, y, width, height } = element.getBoundingClientRect();
  const point = { pointerId: 1, isPrimary: true, bubbles: true, clientX: x + width / 2 };
  const send = (type, clientY) => element.dispatchEvent(new PointerEvent(type, { ...point, clientY }));
  send('pointerdown', y + height / 2);
  send('pointermove', to);
  send('pointerup', to);
}, goal);

test('a row lands at the same place however many frames were drawn while it was dragged', async () => {
  for (const [title, goal, section, index] of [['Torch', 'Audio', 0, 2], ['Brightness', 'Power module', 1, 1]]) {
    for (const frames of ['many', 'none']) {
      const { page, context, handle, row, moves, noGhost } = await openRows();
      const from = await middle(handle(title));
      const to = (await middle(row(goal))).y + 10;
      if (frames === 'none') await dragAtOnce(page, handle(title), to);
      else await drag(page, handle(title), to - from.y);
      await noGhost();
      assert.deepEqual(moves(), [[title, section, index]], `${title}, ${frames}`);
      await context.close();
    }
  }
});

test('a finger drags by the handle, and scrolls elsewhere', async () => {
  const { page, context, moves, noGhost, trouble, row, handle } = await openRows({ options: { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true } });
  const session = await context.newCDPSession(page);
  const from = await middle(handle('Audio'));
  const to = await middle(row('Brightness'));
  const touch = (type, points) => session.send('Input.dispatchTouchEvent', { type, touchPoints: points });
  await touch('touchStart', [{ x: from.x, y: from.y }]);
  for (let step = 1; step <= 8; step += 1) await touch('touchMove', [{ x: from.x, y: from.y + ((to.y - from.y) * step) / 8 }]);
  await page.locator('.carry-layer > .row').waitFor();
  await touch('touchEnd', []);
  await noGhost();
  assert.deepEqual(moves(), [['Audio', 0, 1]]);
  assert.equal(await row('Audio').evaluate((element) => getComputedStyle(element).touchAction), 'auto');
  assert.equal(await handle('Audio').evaluate((element) => getComputedStyle(element).touchAction), 'none');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a refused drop goes back visibly, without movement if the user prefers reduced motion', async () => {
  for (const reducedMotion of ['no-preference', 'reduce']) {
    const { page, context, handle, row, shown, moves, noGhost } = await openRows({ accepts: () => false, options: { reducedMotion } });
    await page.evaluate(() => {
      globalThis.flights = [];
      const animate = Element.prototype.animate;
      Element.prototype.animate = function (...args) {
        if (this.parentElement?.className === 'carry-layer') globalThis.flights.push(args[0].at(-1).transform);
        return animate.apply(this, args);
      };
    });
    await drag(page, handle('Connectivity'), row('Power module'));
    await noGhost();
    assert.deepEqual(moves().length, 1);
    assert.deepEqual(await shown(), [order(...enabled), order(...disabled)]);
    assert.equal((await page.evaluate(() => globalThis.flights)).length, reducedMotion === 'reduce' ? 0 : 1);
    assert.equal(await row('Connectivity').evaluate((element) => getComputedStyle(element).opacity), '1');
    await context.close();
  }
});

test('Escape, and a pointer cancelled by the browser, put a dragged row back without a message to the server', async () => {
  const { page, context, handle, row, shown, moves, noGhost } = await openRows();
  await drag(page, handle('Brightness'), row('Media'), { release: false });
  await page.keyboard.press('Escape');
  await noGhost();
  assert.deepEqual((await shown())[0], order(...enabled));
  await page.mouse.up();
  await drag(page, handle('Brightness'), row('Media'), { release: false });
  await page.evaluate(() => dispatchEvent(new PointerEvent('pointercancel', { pointerId: 1 })));
  await noGhost();
  await page.mouse.up();
  assert.deepEqual((await shown())[0], order(...enabled));
  assert.deepEqual(moves(), []);
  await context.close();
});

test('the drag ends if the dragged row is removed', async () => {
  const { page, context, server, fixture, handle, row, said, moves, trouble, noGhost } = await openRows();
  await drag(page, handle('Brightness'), row('Media'), { release: false });
  const [section] = fixture.sections;
  server.patch([{ op: 'replace', path: `/nodes/${section}/children`, value: fixture.lists[0].filter((id) => id !== fixture.rows[0][1]) }, { op: 'remove', path: `/nodes/${fixture.rows[0][1]}` }]);
  await noGhost();
  assert.equal(await said(), 'The row that was being moved is gone');
  await page.mouse.up();
  assert.deepEqual(moves(), []);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('changes of other rows do not end a drag', async () => {
  const { page, context, server, fixture, handle, row, shown, moves, noGhost } = await openRows();
  await drag(page, handle('Brightness'), row('Media'), { release: false });
  const gone = fixture.lists[0].splice(2, 1)[0];
  server.patch([{ op: 'replace', path: `/nodes/${fixture.sections[0]}/children`, value: [...fixture.lists[0]] }, { op: 'remove', path: `/nodes/${gone}` }]);
  await eventually(async () => !(await shown())[0].includes('Audio'), 'the other row is gone');
  assert.equal(await page.locator('.carry-layer > .row').count(), 1);
  await page.mouse.up();
  await noGhost();
  assert.deepEqual(moves(), [['Brightness', 0, 2]]);
  await context.close();
});

test('Space picks a row up, arrows move it across the sections, Space puts it down', async () => {
  const { page, context, handle, shown, said, moves, trouble } = await openRows();
  await handle('Media').focus();
  await page.keyboard.press('Space');
  assert.equal(await said(), 'Media picked up, 4 of 4 in Enabled modules. Arrow keys move it, Space puts it down, Escape takes it back.');
  await page.keyboard.press('ArrowUp');
  assert.equal(await said(), '3 of 4 in Enabled modules');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('ArrowDown');
  assert.equal(await said(), '1 of 3 in Disabled modules');
  await page.keyboard.press('End');
  assert.equal(await said(), '3 of 3 in Disabled modules');
  assert.deepEqual((await shown())[1], ['Power module', 'Torch', 'Media']);
  assert.deepEqual(moves(), []);
  assert.equal(await page.evaluate(() => document.activeElement.getAttribute('aria-label')), 'Move Media');
  await page.keyboard.press('Space');
  await eventually(() => moves().length === 1, 'the move is sent');
  assert.deepEqual(moves(), [['Media', 1, 2]]);
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Move Media'), 'the focus stays with the row');
  assert.equal(await page.locator('.row.lifted').count(), 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('Escape puts back a row that was picked up by keyboard; so does moving the focus', async () => {
  const { page, context, handle, shown, said, moves } = await openRows();
  await handle('Audio').focus();
  for (const leave of [() => page.keyboard.press('Escape'), () => page.getByRole('button', { name: 'Back to Zentrova' }).focus(), () => page.mouse.click(5, 5)]) {
    await handle('Audio').focus();
    await page.keyboard.press('Space');
    await page.keyboard.press('Home');
    await eventually(async () => (await shown())[0][0] === 'Audio', 'the row is at the top');
    await leave();
    await eventually(async () => (await shown())[0][2] === 'Audio', 'the row is back');
    assert.match(await said(), /^Audio is back at 3 of 4 in Enabled modules/);
  }
  assert.deepEqual(moves(), []);
  await context.close();
});

test('single clicks move a row: the handle opens a menu', async () => {
  const { page, context, handle, shown, moves, trouble } = await openRows();
  const choose = async (title, choice) => {
    await handle(title).click();
    await page.getByRole('menuitem', { name: choice, exact: true }).click();
    await page.getByRole('menu').waitFor({ state: 'detached' });
  };
  await choose('Audio', 'Move up');
  await eventually(() => moves().length === 1, 'the move is sent');
  await choose('Brightness', 'Move to Disabled modules');
  await eventually(() => moves().length === 2, 'the second move is sent');
  await choose('Media', 'Move to the top');
  await eventually(() => moves().length === 3, 'the third move is sent');
  assert.deepEqual(moves(), [['Audio', 0, 1], ['Brightness', 1, 2], ['Media', 0, 0]]);
  await eventually(async () => (await shown())[0][0] === 'Media', 'the row is at the top');
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Move Media'), 'the focus is on the handle');
  await handle('Media').press('Enter');
  assert.equal(await page.getByRole('menuitem', { name: 'Move up' }).isDisabled(), true);
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Escape');
  await page.getByRole('menu').waitFor({ state: 'detached' });
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Move Media'), 'the focus is back');
  assert.deepEqual(trouble, []);
  await context.close();
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: an editing table, a picked-up row and the menu of moves, ${appearance}`, async () => {
    const { page, context, handle } = await openRows({ device: { appearance }, options: { reducedMotion: 'reduce' } });
    await assertAccessible(page, 'the table');
    await handle('Audio').focus();
    await page.keyboard.press('Space');
    await page.keyboard.press('ArrowDown');
    await assertAccessible(page, 'a row in the hand');
    await page.keyboard.press('Escape');
    await handle('Audio').click();
    await page.getByRole('menu').waitFor();
    await assertAccessible(page, 'the menu');
    await context.close();
  });
}

test('a row that is dropped at its old place sends nothing, and says so', async () => {
  const { page, context, handle, said, moves } = await openRows();
  await handle('Audio').focus();
  await page.keyboard.press('Space');
  await page.keyboard.press('ArrowUp');
  await page.keyboard.press('ArrowDown');
  await page.keyboard.press('Enter');
  await eventually(async () => (await said()) === 'Audio stays at 3 of 4 in Enabled modules', 'it is announced');
  assert.deepEqual(moves(), []);
  await context.close();
});
