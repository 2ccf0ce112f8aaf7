import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { PageState } = await importSource('protocol/state');

const tree = { revision: 4, root: '1', nodes: { 1: { kind: 'window', children: [] } }, device: { appearance: 'light' } };
const dark = [{ op: 'replace', path: '/device/appearance', value: 'dark' }];

function opened() {
  const state = new PageState();
  state.take({ type: 'tree', revision: 4, tree });
  return state;
}

test('a patch for the current revision is applied', () => {
  const state = opened();
  assert.deepEqual(state.take({ type: 'patch', base: 4, revision: 5, patch: dark }), { treeChanged: true });
  assert.equal(state.tree.device.appearance, 'dark');
  assert.equal(state.revision, 5);
});

test('after a gap nothing is applied until the whole tree comes, and it is requested once', () => {
  const state = opened();
  assert.deepEqual(state.take({ type: 'patch', base: 5, revision: 6, patch: dark }), { gap: true });
  assert.deepEqual(state.take({ type: 'patch', base: 6, revision: 7, patch: dark }), {});
  assert.equal(state.tree.device.appearance, 'light');
  state.take({ type: 'tree', revision: 9, tree });
  assert.deepEqual(state.take({ type: 'patch', base: 9, revision: 10, patch: dark }), { treeChanged: true });
  assert.equal(state.tree.device.appearance, 'dark');
});

test('a patch that does not fit the tree is a gap', () => {
  const state = opened();
  const patch = [{ op: 'remove', path: '/nodes/7' }];
  assert.deepEqual(state.take({ type: 'patch', base: 4, revision: 5, patch }), { gap: true });
  assert.equal(state.revision, 4);
});

test('new entries are appended to the log, and the server can restart it', () => {
  const state = new PageState();
  const entry = (message) => ({ time: 0, message });
  state.take({ type: 'side', log: [entry('a')] });
  state.take({ type: 'side', log: [entry('b')] });
  assert.deepEqual(state.sides.log.map((each) => each.message), ['a', 'b']);
  state.take({ type: 'side', log: [entry('c')], logFromStart: true });
  assert.deepEqual(state.sides.log.map((each) => each.message), ['c']);
});
