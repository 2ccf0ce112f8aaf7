import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { movableRows } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

const count = 1000;

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const titles = Array.from({ length: count }, (_, index) => `Module ${index}`);

/** A table of a thousand rows. Scrolling creates the cells of rows that become visible, as the application does. */
async function openLong(options) {
  const fixture = movableRows(['Phone', 'Camera', 'Torch'], titles);
  const { builder, tree, lists } = fixture;
  const opened = await openAlone(browser, tree, options);
  const withCell = new Set(lists.flat().filter((row) => tree.nodes[row].children.length > 0));
  const cellsAt = (offset) => {
    const first = Math.max(0, Math.floor((offset - 300) / 44));
    return lists[1].slice(first, first + 30).filter((row) => !withCell.has(row)).flatMap((row) => {
      withCell.add(row);
      const known = new Set(Object.keys(builder.nodes));
      const cell = builder.cell({ text: builder.text(tree.nodes[row].title) });
      const added = Object.keys(builder.nodes).filter((id) => !known.has(id));
      return [
        ...added.map((id) => ({ op: 'add', path: `/nodes/${id}`, value: builder.nodes[id] })),
        { op: 'replace', path: `/nodes/${row}/children`, value: [cell] },
      ];
    });
  };
  opened.server.answer((message) => (message.action === 'scroll' ? cellsAt(message.offset) : fixture.answer(message)));
  const scroller = opened.page.locator('.table-scroll');
  const rowsInDocument = () => opened.page.locator('.row').count();
  return { ...opened, fixture, scroller, rowsInDocument };
}

test('of a thousand rows, only those near the visible area are in the document, at any scroll position', async () => {
  const { page, context, trouble, scroller, rowsInDocument } = await openLong();
  assert.ok((await rowsInDocument()) < 120);
  const whole = await scroller.evaluate((element) => element.scrollHeight);
  assert.ok(whole > (count + 3) * 44, 'the other rows keep their room');
  for (const part of [0.1, 0.5, 0.93, 1, 0.4, 0]) {
    await scroller.evaluate((element, goal) => { element.scrollTop = goal; }, part * whole);
    const first = Math.max(0, Math.round((part * whole) / 44) - 40);
    await eventually(async () => {
      const inSight = await page.locator('.screen').evaluate((screen) => {
        const box = screen.getBoundingClientRect();
        return [0.3, 0.6, 0.9].map((share) => document.elementFromPoint(box.left + box.width / 2, box.top + box.height * share)?.closest('.row')?.dataset.node);
      });
      return part === 0 || inSight.every((id) => id !== undefined);
    }, `rows are shown at ${part} of the scroll range, after row ${first}`);
    assert.ok((await rowsInDocument()) < 120);
    assert.equal(await scroller.evaluate((element) => element.scrollHeight), whole, 'nothing jumps');
  }
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a row is dragged across the whole table: it scrolls while the finger is at its edge', async () => {
  const { page, context, server, fixture, scroller, rowsInDocument, trouble } = await openLong();
  const handle = await page.getByRole('button', { name: /^Move Module 0$/ }).boundingBox();
  const screen = await page.locator('.screen').boundingBox();
  await page.mouse.move(handle.x + handle.width / 2, handle.y + handle.height / 2);
  await page.mouse.down();
  await page.mouse.move(handle.x + handle.width / 2, screen.y + screen.height - 12, { steps: 5 });
  await eventually(() => scroller.evaluate((element) => element.scrollTop + element.clientHeight >= element.scrollHeight - 2), 'the end is reached', 60_000);
  assert.ok((await rowsInDocument()) < 120);
  await page.mouse.up();
  await eventually(() => server.actions.length === 1, 'the move is sent');
  const [move] = server.actions;
  assert.deepEqual([move.action, move.node, move.section, move.index], ['move', fixture.rows[1][0], 1, count - 1]);
  await eventually(async () => (await page.locator('.carry-layer > *').count()) === 0, 'the row has landed');
  assert.equal((await page.locator('.rows').last().locator('.row').last().textContent()).includes('Module 0'), true);
  await page.mouse.move(0, 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the menu and the keys move a row to the other end of a thousand rows, and the focus follows', async () => {
  const { page, context, server, trouble } = await openLong();
  await page.getByRole('button', { name: /^Move Module 3$/ }).click();
  await page.getByRole('menuitem', { name: 'Move to the bottom' }).click();
  await eventually(() => server.actions.some(({ index }) => index === count - 1), 'the move is sent');
  const focusInSight = () => page.evaluate(() => {
    const box = document.activeElement.getBoundingClientRect();
    const screen = document.querySelector('.screen').getBoundingClientRect();
    return document.activeElement.getAttribute('aria-label') === 'Move Module 3' && box.top > screen.top && box.bottom < screen.bottom;
  });
  await eventually(focusInSight, 'the moved row is visible and has the focus');
  await page.keyboard.press('Space');
  await page.keyboard.press('Home');
  await eventually(focusInSight, 'the picked-up row is visible');
  await page.keyboard.press('Space');
  await eventually(() => server.actions.at(-1).index === 0, 'it is put down at the top');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a row keeps the focus when it is scrolled away', async () => {
  const { page, context, scroller } = await openLong();
  await page.getByRole('button', { name: /^Move Module 2$/ }).focus();
  await scroller.evaluate((element) => { element.scrollTop = 20_000; });
  await eventually(async () => (await page.locator('.row[aria-posinset="450"]').count()) === 1, 'rows far away are shown');
  assert.equal(await page.evaluate(() => document.activeElement.getAttribute('aria-label')), 'Move Module 2');
  await context.close();
});

test('no barriers: in the middle of a thousand rows', async () => {
  const { page, context, scroller } = await openLong();
  await scroller.evaluate((element) => { element.scrollTop = 20_000; });
  await page.locator('.row[aria-posinset="450"] .text').waitFor();
  await assertAccessible(page, 'the long table');
  await context.close();
});
