import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const banner = (page) => page.getByRole('alert').getByText('The connection is lost.');

test('a lost connection is announced and retried, and the typed text is sent afterwards', async () => {
  const fixture = everyKind();
  const { page, context, server, trouble } = await openAlone(browser, fixture.tree);
  const field = page.locator('.row[data-identifier="name"]').getByRole('textbox');
  await field.click();
  await page.keyboard.type('abc');
  await eventually(() => server.actions.at(-1)?.string === 'abc', 'the typed text is sent');
  server.accepting = false;
  const place = await page.locator('.device').boundingBox();
  await server.socket.close();
  await banner(page).waitFor();
  assert.deepEqual(await page.locator('.device').boundingBox(), place, 'the device stays where it is');
  await page.keyboard.type('def');
  await page.keyboard.press('Enter');
  assert.equal(await field.inputValue(), 'abcdef');

  server.answer((action) => (action.phase === 'end' ? [{ op: 'add', path: `/nodes/${action.node}/string`, value: action.string }] : []));
  server.accepting = true;
  await banner(page).waitFor({ state: 'detached' });
  await eventually(() => server.actions.some((action) => action.phase === 'end' && action.string === 'abcdef'), 'the end is sent after the break');
  await eventually(async () => (await field.inputValue()) === 'abcdef', 'the text is unchanged');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a tap without a connection is refused with a message and never sent later', async () => {
  const fixture = everyKind();
  const { page, context, server } = await openAlone(browser, fixture.tree);
  server.accepting = false;
  await server.socket.close();
  await banner(page).waitFor();
  await page.getByRole('button', { name: 'Respring' }).click();
  await page.getByRole('status').getByText('No connection: the action was not sent.').waitFor();
  // The pause is now long enough for a click before its end.
  await eventually(() => server.attempts >= 5, 'the connection is retried');
  server.accepting = true;
  await page.getByRole('button', { name: 'Try now' }).click();
  await banner(page).waitFor({ state: 'detached' });
  server.answer(() => []);
  await page.getByRole('switch', { name: 'Enabled' }).click();
  await eventually(() => server.actions.length > 0, 'a later action is sent');
  assert.deepEqual(server.actions.map((action) => action.action), ['toggle']);
  await context.close();
});

test('after a gap the whole tree is requested and shown', async () => {
  const fixture = everyKind();
  const { page, context, server, trouble } = await openAlone(browser, fixture.tree);
  const control = fixture.tree.nodes[fixture.tree.nodes[fixture.rows.enabled].children[0]].children.at(-1);
  server.tree = structuredClone(fixture.tree);
  server.tree.nodes[control].on = false;
  server.revision = 30;
  server.patch([]);
  await page.getByRole('switch', { name: 'Enabled', checked: false }).waitFor();
  assert.equal(server.sent.filter((message) => message.type === 'resync').length, 1);
  assert.deepEqual(trouble, []);
  await context.close();
});
