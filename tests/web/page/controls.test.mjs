import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { isDeepStrictEqual } from 'node:util';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { below, everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const replace = (node, member, value) => ({ op: 'replace', path: `/nodes/${node}/${member}`, value });

/** Acts like a bundle that accepts every value. */
function accepting(action) {
  switch (action.action) {
    case 'toggle': return [replace(action.node, 'on', action.on)];
    case 'segment': return [replace(action.node, 'selected', action.index)];
    case 'slide': return action.phase === 'end' ? [replace(action.node, 'value', action.value)] : [];
    case 'edit': return action.phase === 'end' ? [replace(action.node, 'string', action.string)] : [];
    default: return [];
  }
}

async function open(options, answer = accepting, device) {
  const fixture = everyKind(device);
  const opened = await openAlone(browser, fixture.tree, options);
  opened.server.answer(answer);
  const row = (name) => opened.page.locator(`.row[data-identifier="${name}"]`);
  const node = (name, kind) => below(fixture.tree, fixture.rows[name], kind);
  const close = async () => {
    assert.deepEqual(opened.trouble, []);
    await opened.context.close();
  };
  return { ...opened, ...fixture, row, node, close };
}

/** The last action without its sequence number and type. */
const last = (server) => {
  const { type, sequence, ...action } = server.actions.at(-1) ?? {};
  return action;
};

const isAsked = (server, action) => eventually(() => isDeepStrictEqual(last(server), action), `${JSON.stringify(action)} is sent`);
const isOn = (row, on) => row.getByRole('switch', { checked: on }).waitFor();
const isSelected = (row, title) => row.getByRole('radio', { name: title, checked: true }).waitFor();

test('by mouse: switch, segment, slider, text, button and link send their actions', async () => {
  const { page, server, row, node, rows, close } = await open();
  await row('enabled').getByRole('switch').click();
  await isOn(row('enabled'), false);
  await isAsked(server, { action: 'toggle', node: node('enabled', 'switch'), on: false });

  await row('presentationStyle').getByText('Compact').click();
  await isSelected(row('presentationStyle'), 'Compact');
  await isAsked(server, { action: 'segment', node: node('style', 'segmented'), index: 1 });

  await row('respring').getByRole('button').click();
  await eventually(() => last(server).action === 'tap', 'the tap is sent');
  assert.deepEqual(last(server), { action: 'tap', node: rows.respring });

  await row('moduleMaterial').getByRole('button').click();
  await eventually(() => last(server).node === rows.material, 'the tap is sent');

  const slider = row('backgroundBlur').getByRole('slider');
  const box = await slider.boundingBox();
  await page.mouse.move(box.x + box.width * 0.75, box.y + box.height / 2);
  await page.mouse.down();
  await page.mouse.move(box.x + box.width * 0.25, box.y + box.height / 2, { steps: 4 });
  assert.notEqual(last(server).action, 'slide', 'a slider that is not continuous says nothing while it moves');
  await page.mouse.up();
  await eventually(() => last(server).action === 'slide', 'the value is sent on release');
  const { value, ...slide } = last(server);
  assert.deepEqual(slide, { action: 'slide', node: node('blur', 'slider'), phase: 'end' });
  assert.ok(value > 0.2 && value < 0.3, String(value));

  await row('name').getByText('Name').click();
  await page.keyboard.type('Home');
  await page.locator('.status-bar').first().evaluate(() => document.activeElement.blur());
  await eventually(() => last(server).phase === 'end', 'the text is sent at the end');
  assert.deepEqual(last(server), { action: 'edit', node: node('name', 'textField'), string: 'Home', phase: 'end' });
  await close();
});

test('by touch: switch, segment by a drag, slider and scrolling', async () => {
  const { page, server, row, node, table, close } = await open({ viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true });
  await row('enabled').getByRole('switch').tap();
  await isOn(row('enabled'), false);
  await row('presentationStyle').getByText('Compact').tap();
  await isSelected(row('presentationStyle'), 'Compact');
  await row('respring').getByRole('button').tap();
  await eventually(() => last(server).action === 'tap', 'the tap is sent');

  const box = await row('presentationStyle').locator('.segmented').boundingBox();
  const touch = await page.context().newCDPSession(page);
  const at = (part) => [{ x: box.x + box.width * part, y: box.y + box.height / 2 }];
  await touch.send('Input.dispatchTouchEvent', { type: 'touchStart', touchPoints: at(0.8) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchMove', touchPoints: at(0.5) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchMove', touchPoints: at(0.2) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchEnd', touchPoints: [] });
  await isSelected(row('presentationStyle'), 'Full Screen');
  await isAsked(server, { action: 'segment', node: node('style', 'segmented'), index: 0 });

  const slider = await row('backgroundBlur').getByRole('slider').boundingBox();
  const on = (part) => [{ x: slider.x + slider.width * part, y: slider.y + slider.height / 2 }];
  await touch.send('Input.dispatchTouchEvent', { type: 'touchStart', touchPoints: on(0.75) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchMove', touchPoints: on(0.6) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchMove', touchPoints: on(0.5) });
  await touch.send('Input.dispatchTouchEvent', { type: 'touchEnd', touchPoints: [] });
  await eventually(() => last(server).action === 'slide', 'the slider follows the finger');
  assert.ok(Math.abs(last(server).value - 0.5) < 0.05, String(last(server).value));

  await row('passcode').getByRole('textbox').tap();
  await page.keyboard.type('9');
  await page.keyboard.press('Enter');
  await eventually(() => last(server).phase === 'end', 'the text is sent');
  assert.equal(last(server).string, '12349');

  await page.locator('.table-scroll').evaluate((scroller) => { scroller.scrollTop = 200; });
  await eventually(() => server.sent.some((message) => message.action === 'scroll' && message.offset > 0), 'the scrolling is sent');
  assert.equal(server.sent.find((message) => message.action === 'scroll').node, table);
  await close();
});

test('by keyboard: every control can be reached and used, with arrow keys in segments and sliders', async () => {
  const { page, server, row, node, rows, close } = await open();
  await row('enabled').getByRole('switch').focus();
  await page.keyboard.press('Space');
  await isOn(row('enabled'), false);
  await page.keyboard.press('Tab');
  await page.keyboard.press('Enter');
  await eventually(() => last(server).action === 'tap', 'Enter taps');
  assert.equal(last(server).node, rows.respring);

  await page.keyboard.press('Tab');
  await page.keyboard.press('ArrowRight');
  await isSelected(row('presentationStyle'), 'Compact');
  await eventually(() => page.evaluate(() => document.activeElement.textContent === 'Compact'), 'the focus follows the selection');
  await page.keyboard.press('ArrowRight');
  await isSelected(row('presentationStyle'), 'Full Screen');

  await page.keyboard.press('Tab');
  await page.keyboard.press('Space');
  await isOn(row('presentFullyExpanded'), true);

  await page.keyboard.press('Tab');
  await page.keyboard.press('ArrowLeft');
  await eventually(() => last(server).action === 'slide', 'an arrow slides');
  assert.equal(last(server).node, node('blur', 'slider'));
  assert.ok(Math.abs(last(server).value - 0.7) < 1e-9);

  await page.keyboard.press('Tab');
  await page.keyboard.press('ArrowRight');
  await eventually(() => last(server).node === node('corner', 'slider'), 'an arrow slides by a segment');
  assert.equal(last(server).value, 20);

  await page.keyboard.press('Tab');
  await page.keyboard.press('Tab');
  await page.keyboard.type('abc');
  await page.keyboard.press('Enter');
  await eventually(() => last(server).phase === 'end', 'Return ends the editing');
  assert.deepEqual(last(server), { action: 'edit', node: node('name', 'textField'), string: 'abc', phase: 'end' });
  await close();
});

test('Escape discards a typed text and restores the old one', async () => {
  const { page, server, row, close } = await open();
  await row('passcode').getByRole('textbox').click();
  await page.keyboard.type('99');
  await page.keyboard.press('Escape');
  await eventually(() => last(server).phase === 'cancel', 'the editing is cancelled');
  await eventually(async () => (await row('passcode').getByRole('textbox').inputValue()) === '1234', 'the old text is back');
  await close();
});

test('a switch changes at once and shows the requested state until the answer', async () => {
  const { server, row, node, close } = await open({}, () => undefined);
  const control = row('enabled').getByRole('switch');
  await control.click();
  await isOn(row('enabled'), false);
  await isAsked(server, { action: 'toggle', node: node('enabled', 'switch'), on: false });
  await control.click();
  await isOn(row('enabled'), true);
  await isAsked(server, { action: 'toggle', node: node('enabled', 'switch'), on: true });

  const [first, second] = server.actions.map((action) => action.sequence);
  server.patch([replace(node('enabled', 'switch'), 'on', false)], first);
  server.patch([], second);
  await isOn(row('enabled'), false);
  await close();
});

test('a value that the bundle refuses snaps back and is announced', async () => {
  const { page, server, row, close } = await open({}, () => 'The bundle takes no such value.');
  await row('enabled').getByRole('switch').click();
  await page.getByRole('status').getByText('The bundle takes no such value.').waitFor();
  await isOn(row('enabled'), true);

  await row('presentationStyle').getByText('Compact').click();
  await eventually(() => last(server).action === 'segment', 'the choice is requested');
  await isSelected(row('presentationStyle'), 'Full Screen');

  const slider = row('backgroundBlur').getByRole('slider');
  await slider.focus();
  await page.keyboard.press('ArrowLeft');
  await eventually(() => last(server).action === 'slide', 'the value is requested');
  await eventually(async () => (await slider.inputValue()) === '0.75', 'the slider snaps back');

  await row('name').getByRole('textbox').click();
  await page.keyboard.type('x');
  await page.keyboard.press('Enter');
  await eventually(async () => (await row('name').getByRole('textbox').inputValue()) === '', 'the text snaps back');
  await close();
});

test('a disabled row is dimmed and takes no input', async () => {
  const { server, row, close } = await open();
  const button = row('arrangeModules').getByRole('group');
  assert.equal(await button.getAttribute('aria-disabled'), 'true');
  assert.equal(await row('arrangeModules').locator('.texts').evaluate((texts) => getComputedStyle(texts).opacity), '0.4');
  await button.click({ force: true });
  await row('enabled').getByRole('switch').click();
  await eventually(() => last(server).action === 'toggle', 'the switch works');
  assert.deepEqual(server.actions.map((action) => action.action), ['toggle']);
  await close();
});

test('a locked segmented control is dimmed and takes no input', async () => {
  const { server, row, rows, tree, node, close } = await open();
  const cell = below(tree, rows.style, 'cell');
  server.patch([{ op: 'add', path: `/nodes/${cell}/interactive`, value: false }, { op: 'add', path: `/nodes/${cell}/alpha`, value: 0.6 }]);
  await row('presentationStyle').locator('.segment:disabled').first().waitFor();
  await row('presentationStyle').getByText('Compact').click({ force: true });
  await row('enabled').getByRole('switch').click();
  await eventually(() => last(server).action === 'toggle', 'the switch works');
  assert.deepEqual(server.actions.map((action) => action.node), [node('enabled', 'switch')]);
  assert.equal(await row('presentationStyle').locator('.cell').evaluate((element) => getComputedStyle(element).opacity), '0.6');
  await close();
});
