import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { anyImpact, assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const side = {
  type: 'side',
  file: {
    path: '/var/jb/var/mobile/Library/Preferences/com.hollowmere.zentrovaprefs.plist', state: 'ok',
    entries: { presentationStyle: 1, enabled: true }, changed: [{ key: 'presentationStyle', before: 0, after: 1 }],
  },
  log: [{ time: 0.1, source: 'nslog', message: '[Zentrova] source: 0' }],
  programs: [{ path: '/var/jb/usr/bin/sbreload', arguments: ['sbreload'], environment: null, exit: 0 }],
  row: { node: '1', identifier: 'presentationStyle', cellType: 'PSSegmentCell', properties: { key: 'presentationStyle' } },
};

for (const appearance of ['light', 'dark']) {
  for (const [size, width, height] of [['wide', 1280, 900], ['tablet window', 900, 900], ['phone window', 390, 844]]) {
    test(`no barriers: ${appearance}, ${size}`, async () => {
      const fixture = everyKind({ appearance }, { back: 'Settings' });
      const { page, context, server, trouble } = await openAlone(browser, fixture.tree, { viewport: { width, height }, reducedMotion: 'reduce' });
      server.send(side);
      server.send({ type: 'event', event: 'homeScreenRestarted' });
      await page.getByText('The home screen restarted and reread').waitFor();
      // In a window no larger than a phone, every tab fills the page and has no landmark around it.
      const impacts = size === 'phone window' ? undefined : anyImpact;
      await assertAccessible(page, 'the page', impacts);
      if (size !== 'wide') {
        for (const tab of ['File', 'Row', 'Log', 'Programs', 'Device']) {
          await page.getByRole('tab', { name: tab }).click();
          await assertAccessible(page, tab, impacts);
        }
      }
      assert.deepEqual(trouble, []);
      await context.close();
    });
  }

  test(`no barriers: dialogs, ${appearance}`, async () => {
    const fixture = everyKind({ appearance });
    const { page, context, server } = await openAlone(browser, fixture.tree, { reducedMotion: 'reduce' });
    const place = `/nodes/${fixture.tree.root}/children`;
    for (const node of [
      { kind: 'alert', style: 'alert', title: 'Restart?', message: 'Now.', actions: [{ title: 'Cancel', style: 'cancel' }, { title: 'Restart', style: 'destructive' }] },
      { kind: 'alert', style: 'sheet', title: 'Restart?', actions: [{ title: 'Restart', style: 'destructive' }, { title: 'Cancel', style: 'cancel' }] },
      { kind: 'crash', name: 'NSRangeException', reason: 'index 4 beyond bounds' },
    ]) {
      server.patch([{ op: 'add', path: '/nodes/900', value: { ...node, children: [] } }, { op: 'add', path: `${place}/-`, value: '900' }]);
      await page.getByRole('alertdialog').waitFor();
      await assertAccessible(page, `${node.kind} ${node.style ?? ''}`, anyImpact);
      server.patch([{ op: 'remove', path: `${place}/1` }, { op: 'remove', path: '/nodes/900' }]);
      await page.getByRole('alertdialog').waitFor({ state: 'detached' });
    }
    await context.close();
  });
}

test('switches and sliders are visible with forced colours', async () => {
  const { page, context } = await openAlone(browser, everyKind().tree, { forcedColors: 'active', reducedMotion: 'reduce' });
  const ground = (locator) => locator.first().evaluate((element) => getComputedStyle(element).backgroundColor);
  const [on, off, thumb, around] = await Promise.all([
    page.getByRole('switch', { checked: true }), page.getByRole('switch', { checked: false }), page.locator('.switch-thumb'), page.locator('body'),
  ].map(ground));
  assert.equal(new Set([on, off, thumb]).size, 3, 'on, off and the thumb are told apart');
  assert.ok(on !== around && off !== around, 'they contrast with the page');
  assert.equal(await page.locator('.slider-track').first().evaluate((track) => getComputedStyle(track).forcedColorAdjust), 'none');
  await context.close();
});

test('what the application announces is read aloud', async () => {
  const { page, context, server } = await openAlone(browser, everyKind().tree);
  server.send({ type: 'event', event: 'announce', text: 'Two rows were inserted' });
  await eventually(async () => (await page.locator('[data-live]').textContent()) === 'Two rows were inserted', 'the live region has the text');
  await context.close();
});

test('the focused row shows its specifier, and "i" opens that pane', async () => {
  const fixture = everyKind();
  const { page, context, server } = await openAlone(browser, fixture.tree);
  await page.getByRole('switch', { name: 'Enabled' }).focus();
  await eventually(() => server.sent.some((message) => message.type === 'inspect' && message.node === fixture.rows.enabled), 'the row is requested');
  server.send({ ...side, row: { node: fixture.rows.enabled, identifier: 'enabled', cellType: 'PSSwitchCell', properties: { key: 'enabled', default: true } } });
  await page.locator('.pane-row').getByText('PSSwitchCell').waitFor();
  await page.keyboard.press('i');
  await eventually(() => page.evaluate(() => document.activeElement.dataset.pane === 'row'), 'the pane has the focus');
  await context.close();
});
