import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { launchBrowser } from '../support/browser.mjs';
import { eventually } from '../support/eventually.mjs';
import { everyKind, TreeBuilder } from '../support/fixture.mjs';
import { openAlone } from '../support/page-alone.mjs';

let browser;
before(async () => { browser = await launchBrowser(); });
after(() => browser.close());

/** The page of a choice, pushed on top of the shown page. */
function pushChoices(fixture) {
  const { builder, tree } = fixture;
  const known = new Set(Object.keys(builder.nodes));
  const rows = ['Thin', 'Regular', 'Thick'].map((title) => builder.row(undefined, title,
    builder.cell({ cellType: 'PSListItemCell', text: builder.text(title), accessory: title === 'Regular' ? 'checkmark' : 'none' }), { selectable: true }));
  const { page } = builder.page('Module material', [builder.section(undefined, undefined, rows)]);
  const navigation = tree.nodes[tree.root].children[0];
  const added = Object.keys(builder.nodes).filter((id) => !known.has(id));
  const push = [
    ...added.map((id) => ({ op: 'add', path: `/nodes/${id}`, value: builder.nodes[id] })),
    { op: 'replace', path: `/nodes/${navigation}/children`, value: [page] },
    { op: 'replace', path: `/nodes/${navigation}/bar`, value: { title: 'Module material', titleOpacity: 1, back: 'Zentrova' } },
  ];
  const pop = [
    { op: 'replace', path: `/nodes/${navigation}/children`, value: tree.nodes[navigation].children },
    { op: 'replace', path: `/nodes/${navigation}/bar`, value: tree.nodes[navigation].bar },
  ];
  return { push, pop, navigation };
}

test('a page is pushed and popped; the back button and Escape go back', async () => {
  const fixture = everyKind();
  const { page, context, server, trouble } = await openAlone(browser, fixture.tree);
  const { push, pop, navigation } = pushChoices(fixture);
  server.send({ type: 'event', event: 'transition', kind: 'push', duration: 0.35 });
  server.patch(push);
  await page.getByRole('heading', { name: 'Module material' }).waitFor();
  await eventually(async () => (await page.locator('.page.ghost').count()) === 0, 'the old page has left');
  assert.equal(await page.getByRole('main').count(), 1);

  await page.getByRole('button', { name: 'Thick' }).focus();
  await page.keyboard.press('Escape');
  await eventually(() => server.actions.some((action) => action.action === 'back'), 'Escape goes back');
  assert.equal(server.actions.at(-1).node, navigation);
  server.patch(pop);
  await page.getByRole('switch', { name: 'Enabled' }).waitFor();
  assert.deepEqual(trouble, []);
  await context.close();
});

test('screen readers are told which row is chosen', async () => {
  const fixture = everyKind();
  const { page, context, server } = await openAlone(browser, fixture.tree);
  server.patch(pushChoices(fixture).push);
  await page.getByRole('button', { name: 'Regular', pressed: true }).waitFor();
  await page.getByRole('button', { name: 'Thin', pressed: false }).waitFor();
  await context.close();
});

test('a large title gives way to the small one when it has scrolled under the bar', async () => {
  const { page, context } = await openAlone(browser, everyKind({}, { largeTitle: true }).tree, { viewport: { width: 390, height: 600 } });
  const small = page.locator('.bar-title');
  assert.equal(await small.evaluate((title) => getComputedStyle(title).opacity), '0');
  await page.locator('.table-scroll').evaluate((scroller) => { scroller.scrollTop = 120; });
  await eventually(() => small.evaluate((title) => getComputedStyle(title).opacity === '1'), 'the small title is shown');
  await page.locator('.table-scroll').evaluate((scroller) => { scroller.scrollTop = 0; });
  await eventually(() => small.evaluate((title) => getComputedStyle(title).opacity === '0'), 'the small title is hidden');
  await context.close();
});

test('the back button shows the title of the page below if it has room beside the title', async () => {
  const bar = { largeTitle: true, title: 'Connectivity & Favorites', back: 'Arrage modules' };
  const { page, context } = await openAlone(browser, everyKind({}, bar).tree, { viewport: { width: 390, height: 600 } });
  const back = page.getByRole('button', { name: 'Back to Arrage modules' });
  const says = (text) => eventually(async () => (await back.innerText()).trim() === text, text);
  const scrollTo = (top) => page.locator('.table-scroll').evaluate((scroller, place) => { scroller.scrollTop = place; }, top);
  await says('Arrage modules');
  await scrollTo(160);
  await says('Back');
  await scrollTo(0);
  await says('Arrage modules');
  await context.close();
});

test('with nested navigation the outer bar fades the title and the inner one goes back', async () => {
  const b = new TreeBuilder();
  const { page: id } = b.page('Inner', [b.section(undefined, undefined, [b.switchRow('a', 'A', true)])]);
  const inner = b.add({ kind: 'navigation', bar: { title: 'Inner', titleOpacity: 0, back: 'Root', hidden: true } }, [id]);
  const outer = b.add({ kind: 'navigation', bar: { title: 'Outer', titleOpacity: 1 } }, [inner]);
  const root = b.add({ kind: 'window' }, [outer]);
  const tree = { revision: 1, root, nodes: b.nodes, device: b.device };
  const { page, context, server } = await openAlone(browser, tree);
  assert.equal(await page.locator('.bar').count(), 1);
  assert.equal(await page.locator('.bar-title').evaluate((title) => getComputedStyle(title).opacity), '1');
  await page.getByRole('button', { name: 'Back to Root' }).click();
  await eventually(() => server.actions.some((action) => action.action === 'back' && action.node === inner), 'the inner one goes back');
  await context.close();
});

test('a page that could not be loaded says why', async () => {
  const b = new TreeBuilder();
  const id = b.add({ kind: 'page', title: 'Zentrova', problem: { title: 'Zentrova cannot be opened', text: 'Root.plist, line 7: no end of <dict>.' } });
  const { page, context } = await openAlone(browser, b.tree({ page: id, bar: { title: 'Zentrova' } }));
  await page.getByRole('alert').getByText('Root.plist, line 7: no end of <dict>.').waitFor();
  await context.close();
});
