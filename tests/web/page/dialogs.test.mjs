import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

async function present(node) {
  const fixture = everyKind();
  const opened = await openAlone(browser, fixture.tree);
  await opened.page.getByRole('switch', { name: 'Enabled' }).focus();
  const place = `/nodes/${fixture.tree.root}/children`;
  opened.server.patch([{ op: 'add', path: '/nodes/900', value: { ...node, children: [] } }, { op: 'add', path: `${place}/-`, value: '900' }]);
  await opened.page.getByRole('alertdialog').waitFor();
  const dismiss = () => opened.server.patch([{ op: 'remove', path: `${place}/1` }, { op: 'remove', path: '/nodes/900' }]);
  const last = () => opened.server.actions.at(-1) ?? {};
  return { ...opened, dismiss, last };
}

const actions = [{ title: 'Cancel', style: 'cancel' }, { title: 'Restart', style: 'destructive' }];

test('of two choices, cancel is the left one; of more, it is the last', async () => {
  const open = { title: 'Open', style: 'default' };
  const cancel = { title: 'Cancel', style: 'cancel' };
  for (const [given, shown] of [[[open, cancel], ['Cancel', 'Open']], [[cancel, open, { title: 'Copy' }], ['Open', 'Copy', 'Cancel']]]) {
    const { page, context, last } = await present({ kind: 'alert', style: 'alert', title: 'Open?', actions: given });
    assert.deepEqual(await page.locator('.alert-action').allTextContents(), shown);
    await page.getByRole('button', { name: 'Cancel' }).click();
    await eventually(() => last().action === 'choose', 'the choice is sent');
    assert.equal(last().index, given.indexOf(cancel), 'the choice is sent by its index in the alert');
    await context.close();
  }
});

test('an alert takes the focus, traps it, answers, and restores it', async () => {
  const { page, context, trouble, dismiss, last } = await present({ kind: 'alert', style: 'alert', title: 'Restart?', message: 'The home screen restarts.', actions });
  await eventually(() => page.evaluate(() => document.activeElement.textContent === 'Cancel'), 'the focus is in the alert');
  for (let stop = 0; stop < 3; stop += 1) {
    await page.keyboard.press('Tab');
    assert.ok(await page.evaluate(() => document.activeElement.closest('zv-modal') !== null), 'Tab stays inside');
  }
  await page.getByRole('button', { name: 'Restart' }).click();
  await eventually(() => last().action === 'choose', 'the choice is sent');
  assert.deepEqual([last().node, last().index], ['900', 1]);
  dismiss();
  await page.getByRole('alertdialog').waitFor({ state: 'detached' });
  await eventually(() => page.evaluate(() => document.activeElement.getAttribute('aria-label') === 'Enabled'), 'the focus is back');
  assert.deepEqual(trouble, []);
  await context.close();
});

/** What a screen reader says when the dialog opens: its name and its description. */
const spoken = (page) => page.getByRole('alertdialog').evaluate((dialog) => [
  dialog.getAttribute('aria-label'),
  ...(dialog.getAttribute('aria-describedby')?.split(' ') ?? []).map((id) => document.getElementById(id)?.textContent),
]);

test('a dialog is read aloud completely, and nothing twice', async () => {
  const restart = { title: 'Restart?', message: 'The home screen restarts.' };
  for (const [node, said] of [
    [{ kind: 'alert', style: 'alert', ...restart, actions }, Object.values(restart)],
    [{ kind: 'alert', style: 'sheet', title: restart.title, actions }, [restart.title]],
    [{ kind: 'alert', style: 'alert', message: restart.message, actions }, [restart.message]],
    [{ kind: 'crash', name: 'NSRangeException', reason: 'index 4' }, ['Crash: NSRangeException', 'index 4']],
    [{ kind: 'waiting', program: '/bin/bash' }, ['The page waits for a program', '/bin/bash has not ended yet. A device would not respond until it ends.']],
  ]) {
    const { page, context } = await present(node);
    assert.deepEqual(await spoken(page), said);
    await context.close();
  }
});

test('Escape cancels a sheet, or closes one without a cancel button', async () => {
  const first = await present({ kind: 'alert', style: 'sheet', title: 'Reset', actions: [{ title: 'Reset', style: 'destructive' }, actions[0]] });
  await first.page.keyboard.press('Escape');
  await eventually(() => first.last().action === 'choose', 'Escape cancels');
  assert.equal(first.last().index, 1);
  await first.context.close();
  const second = await present({ kind: 'alert', style: 'sheet', title: 'Reset', actions: [{ title: 'Reset' }] });
  await second.page.keyboard.press('Escape');
  await eventually(() => second.last().action === 'close', 'Escape closes');
  await second.context.close();
});

test('a crash is reported with name and reason, and the user can continue or restart', async () => {
  const crash = { kind: 'crash', name: 'NSInvalidArgumentException', reason: '-[HBPreferences setFloat:forKey:]: unrecognized selector sent to instance', where: 'tap' };
  for (const [button, action] of [['Continue with the page as it is', 'continue'], ['Restart Settings', 'restart']]) {
    const { page, context, last } = await present(crash);
    await page.getByText('NSInvalidArgumentException').waitFor();
    await page.getByText(crash.reason).waitFor();
    await page.getByRole('button', { name: button }).click();
    await eventually(() => last().action === action, `${action} is sent`);
    assert.equal(last().node, '900');
    await context.close();
  }
});
