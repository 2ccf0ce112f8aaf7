import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind, TreeBuilder } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

/** The operations that insert a new switch into a section. */
function insertSwitch(fixture, section, place, identifier, title) {
  const known = new Set(Object.keys(fixture.builder.nodes));
  const row = fixture.builder.switchRow(identifier, title, false);
  const added = Object.keys(fixture.builder.nodes).filter((id) => !known.has(id));
  return [
    ...added.map((id) => ({ op: 'add', path: `/nodes/${id}`, value: fixture.builder.nodes[id] })),
    { op: 'add', path: `/nodes/${section}/children/${place}`, value: row },
  ];
}

test('a row keeps its focus, its caret and the typed text when another row is inserted above', async () => {
  const fixture = everyKind();
  const { page, context, server, trouble } = await openAlone(browser, fixture.tree);
  const field = page.locator('.row[data-identifier="name"]').getByRole('textbox');
  await field.click();
  await page.keyboard.type('abcdef');
  await page.keyboard.press('ArrowLeft');
  await page.keyboard.press('ArrowLeft');
  server.patch(insertSwitch(fixture, fixture.sections.access, 0, 'new', 'New row'));
  await page.getByRole('switch', { name: 'New row' }).waitFor();
  assert.equal(await field.evaluate((input) => document.activeElement === input && input.selectionStart), 4);
  await page.keyboard.type('X');
  assert.equal(await field.inputValue(), 'abcdXef');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a finger on a slider keeps it when a row is inserted above', async () => {
  const fixture = everyKind();
  const { page, context, server } = await openAlone(browser, fixture.tree);
  const slider = page.locator('.row[data-identifier="backgroundBlur"]').getByRole('slider');
  const box = await slider.boundingBox();
  const y = box.y + box.height / 2;
  await page.mouse.move(box.x + box.width * 0.75, y);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width * 0.5, y);
  server.patch(insertSwitch(fixture, fixture.sections.look, 0, 'new', 'New row'));
  await page.getByRole('switch', { name: 'New row' }).waitFor();
  assert.ok(Math.abs(Number(await slider.inputValue()) - 0.5) < 0.05, 'the value under the finger stays');
  await page.mouse.move(box.x + box.width * 0.25, y);
  await page.mouse.up();
  await eventually(() => server.actions.some((action) => action.action === 'slide'), 'the value is sent on release');
  assert.ok(Math.abs(server.actions.find((action) => action.action === 'slide').value - 0.25) < 0.05);
  await context.close();
});

test('rows appear and disappear with movement, and without it if the user prefers reduced motion', async () => {
  for (const reducedMotion of ['no-preference', 'reduce']) {
    const fixture = everyKind();
    const { page, context, server, trouble } = await openAlone(browser, fixture.tree, { reducedMotion });
    const running = () => page.evaluate(() => document.getAnimations().filter((each) => !(each instanceof CSSTransition)
      && each.effect.target.closest('.rows')).length);
    // Counts the animations when they start: on a busy machine a later check may come after their end.
    await page.evaluate(() => {
      const { animate } = Element.prototype;
      globalThis.begun = 0;
      Element.prototype.animate = function (...how) {
        if (this.closest('.rows')) globalThis.begun += 1;
        return animate.apply(this, how);
      };
    });
    server.patch(insertSwitch(fixture, fixture.sections.presentation, 2, 'new', 'New row'));
    await page.getByRole('switch', { name: 'New row' }).waitFor();
    await page.evaluate(() => new Promise(requestAnimationFrame));
    assert.equal(await page.evaluate(() => globalThis.begun > 0), reducedMotion === 'no-preference', reducedMotion);
    await eventually(async () => (await running()) === 0, 'the movement ends');

    server.patch([{ op: 'remove', path: `/nodes/${fixture.sections.presentation}/children/2` }]);
    await page.getByRole('switch', { name: 'New row' }).waitFor({ state: 'detached' });
    await eventually(async () => (await page.locator('.row.ghost').count()) === 0, 'the leaving row is removed in the end');
    assert.deepEqual(trouble, []);
    await context.close();
  }
});

test('hidden rows have no cell but keep their height and their name', async () => {
  const b = new TreeBuilder();
  const rows = Array.from({ length: 40 }, (_, index) => (index < 20
    ? b.switchRow(`row${index}`, `Row ${index}`, false)
    : b.row(`row${index}`, `Row ${index}`, undefined, { height: 60, visible: false })));
  const fixture = b.page('Long', [b.section(undefined, undefined, rows)]);
  const { page, context, server } = await openAlone(browser, b.tree(fixture));
  const last = page.locator('.row').last();
  assert.equal((await last.evaluate((row) => row.offsetHeight)), 60);
  assert.equal(await page.getByRole('listitem').count(), 40);
  assert.equal((await last.textContent()).trim(), 'Row 39');
  await page.locator('.table-scroll').hover();
  await page.mouse.wheel(0, 1000);
  await eventually(() => server.sent.some((message) => message.action === 'scroll'), 'the scroll position is sent');
  await context.close();
});

test('a row whose text is a separate view has its accessory at the right', async () => {
  const b = new TreeBuilder();
  const swatch = b.add({ kind: 'view', role: 'accessoryView', frame: [0, 0, 29, 29], layer: { radius: 14.5 } });
  const cell = b.cell({ cellType: 'PSButtonCell' }, [], swatch);
  b.nodes[cell].children.push(b.add({ kind: 'label', frame: [10, 11, 300, 22], string: 'Background', size: 17 }));
  const { page, context } = await openAlone(browser, b.tree(b.page('Colors', [b.section(undefined, undefined, [b.row('color', 'Background', cell)])])));
  const [row, shown] = [await page.locator('.row').boundingBox(), await page.locator('.accessory-view').boundingBox()];
  assert.equal(Math.round(row.x + row.width - shown.x - shown.width), 16);
  await context.close();
});

test('at the largest text size, content stays inside rows of fixed height, and segments keep their width', async () => {
  const b = new TreeBuilder({ textScale: 2.35 });
  const cell = b.cell({ cellType: 'PSButtonCell' });
  b.nodes[cell].children.push(b.add({ kind: 'label', frame: [10, 11, 300, 22], string: 'Background', size: 17 }));
  const segments = ['Rounded', 'Circle', 'Square'];
  const rows = [b.row('color', 'Background', cell), b.segmentRow('shape', 'Shape', segments, 0)];
  const { page, context } = await openAlone(browser, b.tree(b.page('Sizes', [b.section(undefined, undefined, rows)])));
  const label = await page.locator('.label').boundingBox();
  assert.ok(label.height <= 36, `there is room above and below ${label.height} points of text`);
  const widths = await page.locator('.segment').evaluateAll((all) => all.map(({ scrollWidth, clientWidth }) => scrollWidth - clientWidth));
  assert.deepEqual(widths, [0, 0, 0]);
  await context.close();
});

test('a refused late scroll shows no message, a refused tap does', async () => {
  const { tree } = everyKind();
  const { page, context, server } = await openAlone(browser, tree);
  server.answer(({ action }) => `no ${action} any more`);
  await page.locator('.table-scroll').evaluate((scroller) => { scroller.scrollTop = 100; });
  await eventually(() => server.sent.some((message) => message.action === 'scroll'), 'the scrolling is sent');
  await page.getByRole('button', { name: 'Respring' }).click();
  await page.locator('.notice.refused').first().waitFor();
  assert.deepEqual(await page.locator('.notice p').allTextContents(), ['no tap any more']);
  await context.close();
});

test('a row that could not be created says why, in the width of the page, between the other rows', async () => {
  const b = new TreeBuilder();
  const problem = 'Root.plist, row 2 ("Broken"): unknown cell "PSNoSuchCell"; known are PSGroupCell, PSLinkCell, PSSwitchCell';
  const cell = b.cell({ cellType: 'PSStaticTextCell', style: 'subtitle', enabled: false, text: b.text('Broken'), detail: { ...b.text(problem), lines: 0 } });
  const broken = b.row('broken', 'Broken', cell, { problem, height: 144 });
  const unseen = b.row('unseen', 'Unseen', undefined, { problem: 'No cell was given.' });
  const { page, context } = await openAlone(browser, b.tree(b.page('Rows', [b.section(undefined, undefined, [broken, unseen, b.switchRow('after', 'After', true)])])));
  assert.equal(await page.getByText(problem).count(), 1, 'it is said once');
  assert.match(await page.locator('.row[data-identifier="unseen"]').textContent(), /Unseen\s*No cell was given\./);
  const [text, row] = [await page.locator('.cell.problem p').first().boundingBox(), await page.locator('.row').first().boundingBox()];
  assert.ok(text.width > 0.75 * row.width, `${text.width} of ${row.width}`);
  assert.ok(row.height < 144, `${row.height}`);
  await page.getByRole('switch', { name: 'After' }).waitFor();
  await context.close();
});

test('a text that does not fit on its one line ends in an ellipsis', async () => {
  const b = new TreeBuilder();
  const row = b.valueRow('value', 'A label that is rather long', 'A value that is also very long indeed');
  const { page, context } = await openAlone(browser, b.tree(b.page('Rows', [b.section(undefined, undefined, [row])])));
  for (const part of ['.text', '.detail']) {
    const look = await page.locator(part).evaluate((element) => {
      const { textOverflow, whiteSpace } = getComputedStyle(element);
      return { textOverflow, whiteSpace, height: element.offsetHeight };
    });
    assert.equal(look.textOverflow, 'ellipsis');
    assert.equal(look.whiteSpace, 'nowrap');
    assert.ok(look.height < 30, 'it is one line');
  }
  await context.close();
});

test('a right-to-left text that does not fit is cut at its end and left-aligned', async () => {
  const b = new TreeBuilder();
  const rows = ['שלום '.repeat(50), 'שלום'].map((text) => b.valueRow(undefined, text, ''));
  const { page, context } = await openAlone(browser, b.tree(b.page('Rows', [b.section(undefined, undefined, rows)])));
  const [long, short] = await page.locator('.text').evaluateAll((texts) => texts.map((text) => {
    const written = [...text.childNodes].find(({ nodeType }) => nodeType === Node.TEXT_NODE);
    const first = document.createRange();
    first.setStart(written, 0);
    first.setEnd(written, 1);
    const box = text.getBoundingClientRect();
    const letter = first.getBoundingClientRect();
    return { shown: letter.left >= box.left && letter.right <= box.right + 1, left: box.left, width: box.width };
  }));
  assert.ok(long.shown, 'its beginning is shown');
  assert.equal(short.left, long.left);
  assert.ok(short.width < long.width);
  await context.close();
});

test('the line below a row begins where its text begins, and the last row has none', async () => {
  const b = new TreeBuilder();
  const rows = [b.linkRow('link', 'Manual', { subtitle: 'How everything works' }), b.valueRow('plain', 'Version', '1.0'), b.valueRow('last', 'Made for', 'phones')];
  const { page, context } = await openAlone(browser, b.tree(b.page('Lines', [b.section(undefined, undefined, rows)])));
  const lines = await page.locator('.row').evaluateAll((all) => all.map((row) => getComputedStyle(row, '::before')).map(({ content, left }) => (content === 'none' ? 'none' : left)));
  assert.deepEqual(lines, ['60px', '16px', 'none']);
  await context.close();
});

test('static text that is too long for its row makes the row higher instead of being cut', async () => {
  const b = new TreeBuilder({ textScale: 2 });
  const row = b.staticRow('text', 'A text of many words that does not fit into the height that was thought of for it.', 44);
  const { page, context } = await openAlone(browser, b.tree(b.page('Text', [b.section(undefined, undefined, [row])])));
  const cut = await page.locator('.row .text').evaluate((text) => text.scrollHeight > text.clientHeight + 1);
  assert.equal(cut, false);
  assert.ok(await page.locator('.row').evaluate((element) => element.offsetHeight > 100));
  await context.close();
});
