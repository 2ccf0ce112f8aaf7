import assert from 'node:assert/strict';
import { test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { becomes, eventually, still } from '../support/eventually.mjs';
import { useProgram } from '../support/whole.mjs';

const { fresh, open, openNext } = useProgram();

const style = (locator, name) => locator.evaluate((element, property) => getComputedStyle(element)[property], name);
const scrollTo = (page, top) => page.locator('.page:not(.ghost) .table-scroll').evaluate((scroller, y) => { scroller.scrollTop = y; }, top);
/** A length in the points of the device, which may be shown smaller than its real size. */
const offsets = (locator) => locator.evaluate(({ offsetLeft, offsetTop, offsetWidth, offsetHeight }) => [offsetLeft, offsetTop, offsetWidth, offsetHeight]);

/** A visible row, with its cell. */
async function revealed(row, identifier) {
  await row(identifier).scrollIntoViewIfNeeded();
  await row(identifier).locator('.cell').waitFor();
  return row(identifier);
}

test('the banner is above the rows between its margins, and scrolls with them', async () => {
  const { page, trouble } = await fresh();
  const header = page.locator('.table-edge').first();
  const banner = header.locator('.view-image');
  await eventually(() => banner.locator('img').evaluate((image) => image.complete && image.naturalWidth > 0), 'the banner is loaded');
  assert.equal(await header.evaluate((element) => element.offsetHeight), 100);
  assert.deepEqual(await offsets(banner), [50, 0, 290, 100]);
  const first = page.locator('.page:not(.ghost) .section').first();
  assert.ok((await header.boundingBox()).y + (await header.boundingBox()).height <= (await first.boundingBox()).y + 1);
  const before = (await banner.boundingBox()).y;
  await scrollTo(page, 200);
  await eventually(async () => (await banner.boundingBox()).y < before - 100, 'the banner goes up with the rows');
  assert.deepEqual(trouble, []);
});

test('the title of the bar fades in while scrolling, and out at the top', async () => {
  const { page, trouble } = await fresh({ reducedMotion: 'no-preference' });
  const title = page.locator('.bar-title');
  assert.equal(await title.textContent(), 'Zentrova');
  await becomes(() => style(title, 'opacity'), '0', 'the bar has no title at the top');
  await scrollTo(page, 400);
  await becomes(() => style(title, 'opacity'), '1', 'it has one further down');
  await scrollTo(page, 0);
  await becomes(() => style(title, 'opacity'), '0', 'it has none at the top');
  await scrollTo(page, 401);
  await becomes(() => style(title, 'opacity'), '1', 'it has one again');
  assert.deepEqual(trouble, []);
});

test('link rows show tiles, masks, initials and the picture of the maker', async () => {
  const { page, row, trouble } = await fresh();
  const tile = async (name) => (await revealed(row, name)).locator('.cell-picture > .view');
  const size = async (name) => (await offsets(await tile(name))).slice(2);
  assert.deepEqual(await size('websiteLink'), [40, 40]);
  assert.deepEqual(await size('kestrelleLink'), [29, 29]);
  assert.match(await style(await tile('websiteLink'), 'maskImage'), /images\/[0-9a-f]{64}/);
  assert.match(await style(await tile('kestrelleLink'), 'maskImage'), /images\/[0-9a-f]{64}/);
  assert.equal(await style(await tile('guideLink'), 'borderRadius'), '4px');
  assert.equal(await style(await tile('guideLink'), 'maskImage'), 'none');
  assert.equal(await style(await tile('translateLink'), 'borderRadius'), '14.5px');
  assert.equal(await (await tile('translateLink')).locator('.label').textContent(), 'Aa');
  assert.equal(await (await tile('problemLink')).locator('.label').textContent(), '?!');
  const avatar = (await revealed(row, 'hollowmere')).locator('.cell-picture .placed-image');
  await eventually(() => avatar.evaluate((image) => image.complete && image.naturalWidth > 0), 'the picture of the maker is loaded');
  assert.equal(await style(avatar, 'opacity'), '1');
  await page.getByRole('button', { name: 'Kestrelle Gestures for everywhere else', exact: true }).waitFor();
  assert.deepEqual(trouble, []);
});

const links = ['websiteLink', 'kestrelleLink', 'guideLink', 'translateLink', 'problemLink', 'hollowmere'];

test('a change of the tint reaches every cell, also those that become visible later', async () => {
  const { page, row, trouble, close } = await open({ reducedMotion: 'reduce' });
  const color = async (name) => style((await revealed(row, name)).locator('.text'), 'color');
  const before = await color('respring');
  await page.locator('[data-trait="tint"]').fill('#c2185b');
  await eventually(async () => (await color('respring')) !== before, 'the visible row has another colour');
  const tint = await color('respring');
  assert.equal(tint, 'rgb(194, 24, 91)');
  for (const name of ['customize', ...links]) assert.equal(await color(name), tint, name);
  await page.locator('[data-trait="tint"]').fill('#00695c');
  await eventually(async () => (await color(links[0])) !== tint, 'the visible rows have another colour');
  for (const name of links) assert.equal(await color(name), 'rgb(0, 105, 92)', name);
  assert.deepEqual(trouble, []);
  await close();
});

test('a link row asks before it opens its address, and shows the address', async () => {
  const { page, row, trouble } = await fresh();
  const alert = page.getByRole('alertdialog');
  const notice = page.locator('.notice');
  const tap = async (name) => {
    await (await revealed(row, name)).getByRole('button').click();
    await alert.getByRole('heading', { name: 'Open “hollowmere.example”?' }).waitFor();
    await alert.getByText('https://hollowmere.example/guide').waitFor();
  };
  await tap('guideLink');
  assert.deepEqual(await alert.getByRole('button').allTextContents(), ['Cancel', 'Open']);
  await alert.getByRole('button', { name: 'Cancel' }).click();
  await alert.waitFor({ state: 'detached' });
  assert.equal(await notice.count(), 0);

  await tap('guideLink');
  await alert.getByRole('button', { name: 'Open' }).click();
  await alert.waitFor({ state: 'detached' });
  const link = notice.getByRole('link', { name: 'https://hollowmere.example/guide' });
  await link.waitFor();
  assert.equal(await link.getAttribute('href'), 'https://hollowmere.example/guide');
  assert.equal(await link.getAttribute('rel'), 'noopener noreferrer');
  assert.equal(page.context().pages().length, 1, 'the page opens nothing by itself');
  await page.locator('.pane-log').getByText('opening https://hollowmere.example/guide').waitFor();
  assert.deepEqual(trouble, []);
});

test('the profile of the maker asks like any other link', async () => {
  const { page, row } = await fresh();
  await (await revealed(row, 'hollowmere')).getByRole('button').click();
  const alert = page.getByRole('alertdialog');
  await alert.getByRole('heading', { name: /^Open “.+”\?$/ }).waitFor();
  await alert.getByText(/https:\/\/.+hollowmere/).waitFor();
  await page.keyboard.press('Escape');
  await alert.waitFor({ state: 'detached' });
  assert.equal(await page.locator('.notice').count(), 0);
});

test('the version row shows what the package manager says', async () => {
  const { page, row, trouble } = await fresh();
  await (await revealed(row, 'version')).getByRole('button').click();
  const footer = page.locator('.page:not(.ghost) .table-edge').last();
  await footer.getByText('Package: com.hollowmere.zentrova').waitFor();
  const text = await footer.textContent();
  assert.match(text, /1\.0\.0/);
  assert.doesNotMatch(text, /Version: /);
  await page.locator('.pane-programs').getByText('/bin/bash').first().waitFor();
  assert.deepEqual(trouble, []);
});

const endless = 'exec sleep 86400';
const waitingFor = '/bin/bash dpkg -s com.hollowmere.zentrova has not ended yet.';

/** Taps the version row of a device on which the program behind it was replaced. */
async function askVersion(script) {
  const opened = await open({ reducedMotion: 'reduce', prepare: (device) => device.putProgram('bin/bash', script) });
  await (await revealed(opened.row, 'version')).getByRole('button').click();
  const dialog = opened.page.getByRole('alertdialog', { name: 'The page waits for a program' });
  await dialog.getByText(waitingFor).waitFor();
  return { ...opened, dialog };
}

for (const [what, script, exit] of [['does not end', endless, '143'], ['does not want to end', `trap '' TERM\n${endless}`, '137']]) {
  test(`a version program that ${what} is stopped, and the page continues`, async () => {
    const { page, row, device, dialog, trouble, close } = await askVersion(script);
    await dialog.getByRole('button', { name: 'Stop' }).click();
    await dialog.waitFor({ state: 'detached' });
    await page.locator('.page:not(.ghost) .table-edge').getByText('No version was printed.').waitFor();
    await page.locator('.pane-programs').getByText(exit).waitFor();
    await page.locator('.pane-log').getByText('stopped the program that the page waits for').waitFor();
    await (await revealed(row, 'allowInApps')).getByRole('switch').click();
    await becomes(async () => (await device.read()).allowInApps, ['bool', false], 'the page continues');
    assert.equal(await page.locator('.notice').count(), 0, 'nothing was refused');
    assert.deepEqual(trouble, []);
    assert.equal(await close(), 0);
  });
}

test('while a program runs no other action is accepted, every window says so, and each can stop it', async () => {
  const { page, server, dialog, trouble, close } = await askVersion(endless);
  await eventually(() => page.evaluate(() => document.activeElement.textContent.trim() === 'Stop'), 'the focus is on the button');
  await assertAccessible(page, 'the dialog');
  await page.locator('[data-action="reopen"]').click();
  await page.getByText('the page waits for a program: stop it, or wait until it ends').waitFor();
  const other = await openNext(server.address);
  const same = other.page.getByRole('alertdialog', { name: 'The page waits for a program' });
  await same.getByText(waitingFor).waitFor();
  await other.page.keyboard.press('Escape');
  await same.waitFor({ state: 'detached' });
  await dialog.waitFor({ state: 'detached' });
  assert.deepEqual([...trouble, ...other.trouble], []);
  await other.context.close();
  await close();
});

test('the server ends while a page waits for a program', async () => {
  const { close } = await askVersion(endless);
  assert.equal(await close(), 0);
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: link rows and their question, ${appearance}`, async () => {
    const { page, row, trouble } = await fresh({ appearance });
    await (await revealed(row, 'problemLink')).getByRole('button').click();
    await page.getByRole('alertdialog').waitFor();
    await assertAccessible(page, 'the question');
    await page.getByRole('button', { name: 'Open', exact: true }).click();
    await page.locator('.notice').waitFor();
    await still(page);
    await assertAccessible(page, 'link rows');
    assert.deepEqual(trouble, []);
  });
}
