import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { TreeBuilder } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

/** A table that handles long presses and is long enough to scroll. */
async function openColors(options) {
  const b = new TreeBuilder();
  const rows = Array.from({ length: 30 }, (_, index) => b.buttonRow(`color${index}`, `Color ${index}`));
  const fixture = b.page('Colors', [b.section(undefined, undefined, rows)]);
  b.nodes[fixture.table].pressable = true;
  const opened = await openAlone(browser, b.tree(fixture), options);
  const button = opened.page.getByRole('button', { name: 'Color 3', exact: true });
  const told = () => opened.server.actions.filter(({ action }) => action !== 'bounds').map(({ action, phase }) => (phase ? `${action} ${phase}` : action));
  const tells = (...expected) => eventually(() => told().join() === expected.join(), `${expected} is sent, not ${told()}`);
  return { ...opened, button, told, tells, node: rows[3] };
}

test('a press with the mouse is sent at once, and no tap follows', async () => {
  const { page, context, server, button, tells, node, trouble } = await openColors();
  await button.hover();
  await page.mouse.down();
  await tells('press begin');
  assert.equal(server.actions[0].node, node);
  await page.mouse.up();
  await tells('press begin', 'press end');
  await page.getByRole('heading', { name: 'Colors' }).click();
  assert.deepEqual(server.actions.length, 2, 'the click of the press is not sent as a second tap');
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a press that moves away is cancelled', async () => {
  const { page, context, button, tells, told } = await openColors();
  const box = await button.boundingBox();
  await page.mouse.move(box.x + 50, box.y + 10);
  await page.mouse.down();
  await page.mouse.move(box.x + 90, box.y + 10);
  await tells('press begin', 'press cancel');
  await page.mouse.up();
  await button.hover();
  assert.deepEqual(told(), ['press begin', 'press cancel']);
  await context.close();
});

const phone = { viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true };

async function fingerOn(page, context, button) {
  const session = await context.newCDPSession(page);
  const box = await button.boundingBox();
  const point = { x: box.x + 60, y: box.y + 20 };
  const touch = (type, ...touchPoints) => session.send('Input.dispatchTouchEvent', { type, touchPoints });
  return { point, touch };
}

test('a finger that scrolls does not press', async () => {
  const { page, context, button, tells } = await openColors(phone);
  const { point, touch } = await fingerOn(page, context, button);
  await touch('touchStart', point);
  for (const step of [20, 40, 80, 120]) await touch('touchMove', { x: point.x, y: point.y - step });
  await tells('press begin', 'press cancel');
  await touch('touchEnd');
  await context.close();
});

test('a finger that rests is a press until it goes', async () => {
  const { page, context, button, tells } = await openColors(phone);
  const { point, touch } = await fingerOn(page, context, button);
  await touch('touchStart', point);
  await tells('press begin');
  await touch('touchEnd');
  await tells('press begin', 'press end');
  await context.close();
});

test('a click by assistive technology is handled right after a press', async () => {
  const { page, context, button, tells } = await openColors();
  const box = await button.boundingBox();
  await page.mouse.move(box.x + 50, box.y + 10);
  await page.mouse.down();
  await page.mouse.move(box.x + 50, box.y + 200);
  await page.mouse.up();
  await tells('press begin', 'press cancel');
  await button.evaluate((element) => new Promise((resolve) => { setTimeout(() => resolve(element.click()), 1); }));
  await tells('press begin', 'press cancel', 'tap');
  await context.close();
});

test('Enter and Space are held down like a finger', async () => {
  const { page, context, server, button, tells } = await openColors();
  await button.focus();
  for (const key of ['Enter', 'Space']) {
    server.sent.length = 0;
    await page.keyboard.down(key);
    await page.keyboard.down(key);
    await tells('press begin');
    assert.ok(await button.evaluate((element) => 'held' in element.dataset), 'the row looks pressed');
    await page.keyboard.up(key);
    await tells('press begin', 'press end');
  }
  server.sent.length = 0;
  await page.keyboard.down('Enter');
  await page.getByRole('button', { name: 'Color 4', exact: true }).focus();
  await tells('press begin', 'press cancel');
  await page.keyboard.up('Enter');
  await context.close();
});

test('a click by assistive technology is a tap', async () => {
  const { context, button, tells } = await openColors();
  await button.evaluate((element) => element.click());
  await tells('tap');
  await context.close();
});

test('in a table without long presses a tap is sent as a tap', async () => {
  const b = new TreeBuilder();
  const fixture = b.page('Rows', [b.section(undefined, undefined, [b.buttonRow('a', 'A')])]);
  const { page, context, server } = await openAlone(browser, b.tree(fixture));
  await page.getByRole('button', { name: 'A', exact: true }).click();
  await eventually(() => server.actions.length === 1, 'it is sent');
  assert.equal(server.actions[0].action, 'tap');
  await context.close();
});
