import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { assertAccessible } from '../support/accessibility.mjs';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { TreeBuilder } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

const png = Buffer.from('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGP4z8DwHwAFAAH/q842iQAAAABJRU5ErkJggg==', 'base64');
const picture = (digit, size) => ({ hash: digit.repeat(64), width: size, height: size, scale: 3 });
const routes = { '/images/*': (route) => route.fulfill({ body: png, contentType: 'image/png' }) };
const longSubtitle = 'What a program of this kind has to say about itself, in so many words that one line does not hold them';

async function openLinks({ device, ...options } = {}) {
  const b = new TreeBuilder(device);
  const rows = {
    masked: b.linkRow('masked', 'Manual', { subtitle: 'How everything works', layer: { mask: picture('a', 29) } }),
    round: b.linkRow('round', 'hollowmere', { subtitle: '@hollowmere', layer: { radius: 14.5 }, avatar: picture('b', 29) }),
    initials: b.linkRow('initials', 'Sources', { subtitle: 'Read them', layer: { radius: 6 }, initials: 'ZV' }),
    big: b.linkRow('big', 'Blog', { subtitle: longSubtitle, size: 40, layer: { radius: 8 }, lines: 0 }),
    small: b.linkRow('small', 'Shop', { subtitle: longSubtitle, layer: { radius: 0 } }),
  };
  const page = b.page('Links', [b.section('Links', undefined, Object.values(rows))]);
  const opened = await openAlone(browser, b.tree(page), { routes, ...options });
  const row = (name) => opened.page.locator(`.row[data-identifier="${name}"]`);
  const tile = (name) => row(name).locator('.cell-picture > .view');
  const style = (locator, name) => locator.evaluate((element, property) => getComputedStyle(element)[property], name);
  return { ...opened, builder: b, rows, row, tile, style };
}

test('the tile covers the picture, in the shape of its layer', async () => {
  const { context, tile, style, row, trouble } = await openLinks();
  assert.match(await style(tile('masked'), 'maskImage'), /images\/a{64}/);
  assert.equal(await style(tile('masked'), 'backgroundColor'), 'rgb(230, 230, 230)');
  assert.equal(await style(tile('round'), 'borderRadius'), '14.5px');
  assert.equal(await style(tile('round'), 'maskImage'), 'none');
  assert.equal(await style(tile('small'), 'borderRadius'), '0px');
  const [big, small] = [await tile('big').boundingBox(), await tile('masked').boundingBox()];
  assert.ok(Math.abs(big.width / small.width - 40 / 29) < 0.01 && Math.abs(big.width - big.height) < 0.01);
  assert.match(await row('round').locator('.cell-picture .placed-image').getAttribute('src'), /^images\/b{64}$/);
  assert.deepEqual(trouble, []);
  await context.close();
});

test('a tile with initials shows them in the middle, in white', async () => {
  const { context, tile, style } = await openLinks();
  const label = tile('initials').locator('.label');
  assert.equal(await label.textContent(), 'ZV');
  assert.equal(await style(label, 'color'), 'rgb(255, 255, 255)');
  assert.equal(await style(tile('initials'), 'backgroundColor'), 'rgb(179, 179, 179)');
  const [outer, inner] = [await tile('initials').boundingBox(), await label.boundingBox()];
  assert.ok(Math.abs(outer.y + outer.height / 2 - inner.y - inner.height / 2) < 1.5);
  await context.close();
});

test('a picture that is still loading is hidden, and fades in when it arrives', async () => {
  const { page, context, server, rows, builder, tile, style } = await openLinks();
  const view = tile('masked').locator('.view');
  assert.equal(await style(view, 'opacity'), '0');
  const cell = builder.nodes[rows.masked].children[0];
  const content = builder.nodes[cell].children[0];
  const imageView = builder.nodes[content].children[0];
  const image = builder.nodes[builder.nodes[imageView].children[0]].children[0];
  server.patch([
    { op: 'add', path: `/nodes/${image}/image`, value: picture('c', 29) },
    { op: 'remove', path: `/nodes/${image}/alpha` },
    { op: 'add', path: `/nodes/${image}/animation`, value: { id: 7, duration: 0.15, kind: 'change' } },
  ]);
  await view.locator('.placed-image').waitFor();
  assert.equal(await style(view, 'transitionDuration'), '0.15s');
  await eventually(async () => (await style(view, 'opacity')) === '1', 'it is seen');
  assert.equal(await page.locator('.cell-picture').count(), 5);
  await context.close();
});

test('a big row\'s subtitle takes the lines that it needs, others take one line', async () => {
  const { context, row } = await openLinks();
  const height = (name) => row(name).locator('.detail').evaluate((detail) => detail.offsetHeight);
  assert.ok((await height('big')) > (await height('small')) * 1.8);
  assert.equal(await row('big').locator('.detail').evaluate((detail) => detail.scrollHeight > detail.clientHeight + 1), false);
  await context.close();
});

test('the title has the tint, and follows it when it changes', async () => {
  const { context, server, rows, builder, row, style } = await openLinks();
  const title = row('masked').locator('.text');
  const before = await style(title, 'color');
  const cell = builder.nodes[rows.masked].children[0];
  server.patch([
    { op: 'replace', path: '/device/tint', value: 'AF52DEFF' },
    { op: 'replace', path: `/nodes/${cell}/text/color`, value: { rgba: [0.69, 0.32, 0.87, 1] } },
  ]);
  await eventually(async () => (await style(title, 'color')) !== before, 'the title has another colour');
  assert.equal(await style(row('masked').locator('.accessory-view .symbol'), 'color'), 'rgb(199, 199, 204)', 'the symbol keeps its own');
  await context.close();
});

test('a link row is a button whose name is only its title and subtitle', async () => {
  const { page, context, server, rows } = await openLinks();
  await page.getByRole('button', { name: 'hollowmere @hollowmere', exact: true }).click();
  await eventually(() => server.actions.at(-1)?.action === 'tap', 'the tap is sent');
  assert.equal(server.actions.at(-1).node, rows.round);
  await context.close();
});

test('an address that the user confirmed is offered as a link, and is not opened automatically', async () => {
  const { page, context, server, trouble } = await openLinks();
  server.send({ type: 'event', event: 'openURL', url: 'https://example.com/a%20b?c=d' });
  const link = page.getByRole('status').getByRole('link', { name: 'https://example.com/a%20b?c=d' });
  await link.waitFor();
  assert.equal(context.pages().length, 1);
  assert.equal(await link.getAttribute('rel'), 'noopener noreferrer');
  assert.equal(await link.getAttribute('target'), '_blank');
  await page.getByRole('button', { name: 'Dismiss' }).click();
  await link.waitFor({ state: 'detached' });
  assert.deepEqual(trouble, []);
  await context.close();
});

test('only web addresses become links', async () => {
  const { page, context, server } = await openLinks();
  for (const url of ['javascript:alert(1)', 'file:///etc/passwd', 'no address', undefined]) {
    server.send({ type: 'event', event: 'openURL', url });
    await page.getByText(`Not a web address: ${url ?? ''}`).first().waitFor();
  }
  assert.equal(await page.locator('.notice a').count(), 0);
  await context.close();
});

test('an address of a hundred thousand characters leaves the page usable', async () => {
  const { page, context, server } = await openLinks();
  server.send({ type: 'event', event: 'openURL', url: `https://example.com/${'x'.repeat(100_000)}` });
  const notice = page.locator('.notice');
  await notice.waitFor();
  assert.ok((await notice.boundingBox()).height < 200);
  await page.getByRole('button', { name: 'Dismiss' }).click();
  await notice.waitFor({ state: 'detached' });
  await context.close();
});

for (const appearance of ['light', 'dark']) {
  test(`no barriers: link rows, ${appearance}`, async () => {
    const { page, context, server } = await openLinks({ device: { appearance }, reducedMotion: 'reduce' });
    server.send({ type: 'event', event: 'openURL', url: 'https://example.com/' });
    await page.getByRole('link').waitFor();
    await assertAccessible(page, 'link rows');
    await context.close();
  });
}
