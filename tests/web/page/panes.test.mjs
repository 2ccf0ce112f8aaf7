import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const entry = (page, key) => page.locator(`.entries tr[data-key="${key}"]`);

test('numbers keep their type and digits from the file', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  server.socket.send('{"type":"side","file":{"path":"/p","state":"ok","entries":{"real":1.0,"large":9223372036854775807,"small":1},"changed":[]}}');
  assert.match(await entry(page, 'real').textContent(), /real\s*real\s*1\.0/);
  assert.match(await entry(page, 'large').textContent(), /integer\s*9223372036854775807/);
  assert.match(await entry(page, 'small').textContent(), /integer\s*1/);
  await context.close();
});

test('changes of the last tap are shown with before and after, also removed keys', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  const changed = [{ key: 'style', before: 0, after: 1 }, { key: 'gone', before: 'x', after: null }];
  server.send({ type: 'side', file: { path: '/p', state: 'ok', entries: { style: 1, other: true }, changed } });
  await entry(page, 'style').waitFor();
  assert.equal(await page.locator('.entries tr.changed').count(), 1);
  const texts = await page.locator('.last-change li').allTextContents();
  assert.deepEqual(texts.map((text) => text.replace(/\s+/g, ' ').trim()), ['style 0 → 1', 'gone x → none']);
  assert.equal(await page.locator('.last-change').getByRole('img', { name: 'becomes' }).count(), 2, 'the arrow has a name');
  await context.close();
});

test('a list has separate lines below its key, as wide as the table', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  server.send({ type: 'side', file: { path: '/p', state: 'ok', entries: { list: ['a', 'b'], none: [], one: { key: 'value' } }, changed: [] } });
  await entry(page, 'list').waitFor();
  assert.match(await entry(page, 'list').textContent(), /list\s*array\s*2 items/);
  assert.match(await entry(page, 'one').textContent(), /one\s*dictionary\s*1 item\s*$/);
  assert.match(await entry(page, 'none').textContent(), /none\s*array\s*\[\]/);
  const nested = page.locator('.entries tr.nested');
  assert.deepEqual(await nested.allTextContents(), ['[\n  "a",\n  "b"\n]', '{\n  "key": "value"\n}']);
  const [table, list] = [await page.locator('.entries').boundingBox(), await nested.first().locator('pre').boundingBox()];
  assert.ok(list.width > 0.9 * table.width);
  await context.close();
});

test('text of the file is text, whatever it looks like', async () => {
  const { page, context, server, trouble } = await openAlone(browser, everyKind().tree);
  const nasty = '<img src=x onerror="document.title=1">';
  server.send({ type: 'side', file: { path: '/p', state: 'ok', entries: { [nasty]: nasty }, changed: [] }, log: [{ time: 0, message: nasty }] });
  await page.locator('.log').getByText(nasty).waitFor();
  assert.equal(await page.locator('img').count(), 0);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('the log stays at its end while it grows', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  server.send({ type: 'side', log: Array.from({ length: 200 }, (_, index) => ({ time: index, source: 'nslog', message: `line ${index}` })) });
  await page.getByText('line 199').waitFor();
  const pane = page.locator('[data-pane="log"]');
  await eventually(() => pane.evaluate((body) => body.scrollTop + body.clientHeight >= body.scrollHeight - 1), 'the end is visible');
  await context.close();
});

test('traits are set with the names and values of scripts', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  for (const [name, value] of [['idiom', 'pad'], ['screen', '820x1180@2'], ['system', '14.0'], ['appearance', 'dark'], ['text', '1.24']]) {
    await page.locator(`[data-trait="${name}"]`).selectOption(value);
    await eventually(() => server.actions.some((action) => action.action === 'trait' && action.name === name && action.value === value), name);
  }
  await page.getByRole('button', { name: 'Reopen Settings' }).click();
  await eventually(() => server.actions.at(-1).action === 'reopen', 'reopen is sent');
  await context.close();
});

test('neighbours are switched with the names of scripts, and their state is shown', async () => {
  const neighbours = { CCSModuleRepository: true, ZVModuleRepository: false };
  const { page, context, server } = await openAlone(browser, everyKind({ neighbours }).tree);
  await page.getByText('Neighbours', { exact: true }).click();
  await page.getByRole('checkbox', { name: 'CCSModuleRepository', checked: true }).click();
  await page.getByRole('checkbox', { name: 'ZVModuleRepository', checked: false }).click();
  await eventually(() => server.actions.filter(({ action }) => action === 'trait').length === 2, 'both are sent');
  assert.deepEqual(server.actions.filter(({ action }) => action === 'trait').map(({ name, value }) => [name, value]),
    [['neighbour', 'CCSModuleRepository off'], ['neighbour', 'ZVModuleRepository on']]);
  await context.close();
});

test('in a small window the panes are behind tabs, with the arrows between them', async () => {
  const { page, context } = await openAlone(browser, everyKind().tree, { viewport: { width: 390, height: 844 } });
  await page.getByRole('tab', { name: 'Settings', selected: true }).focus();
  await page.keyboard.press('ArrowRight');
  await page.getByRole('tab', { name: 'File', selected: true }).waitFor();
  await page.getByRole('tabpanel', { name: 'File' }).waitFor();
  assert.equal(await page.getByRole('switch').count(), 0);
  await page.keyboard.press('ArrowLeft');
  await page.getByRole('switch').first().waitFor();
  await context.close();
});
