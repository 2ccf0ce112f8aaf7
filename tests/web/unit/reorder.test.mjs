import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { edgeOf, moved, orderOf, rowName, sectionName, spotOf, spotText, stepFrom } = await importSource('components/reorder');

const order = [{ id: 's', rows: ['a', 'b', 'c'] }, { id: 't', rows: ['d'] }];
const rows = (each) => each.map((section) => section.rows.join(''));

test('the index of a place is counted without the moved row', () => {
  assert.deepEqual(rows(moved(order, 'a', { section: 0, index: 2 })), ['bca', 'd']);
  assert.deepEqual(rows(moved(order, 'a', { section: 0, index: 0 })), ['abc', 'd']);
  assert.deepEqual(rows(moved(order, 'b', { section: 1, index: 0 })), ['ac', 'bd']);
  assert.deepEqual(rows(moved(order, 'd', { section: 0, index: 3 })), ['abcd', '']);
});

test('a place that does not exist becomes the nearest one', () => {
  assert.deepEqual(rows(moved(order, 'a', { section: 7, index: 9 })), ['bc', 'da']);
  assert.deepEqual(rows(moved(order, 'a', { section: -1, index: -5 })), ['abc', 'd']);
});

test('steps cross the border of a section and stop at the table\'s ends', () => {
  assert.deepEqual(stepFrom(order, { section: 0, index: 2 }, 1), { section: 1, index: 0 });
  assert.deepEqual(stepFrom(order, { section: 1, index: 0 }, -1), { section: 0, index: 3 });
  assert.deepEqual(stepFrom(order, { section: 0, index: 1 }, -1), { section: 0, index: 0 });
  assert.equal(stepFrom(order, { section: 0, index: 0 }, -1), undefined);
  assert.equal(stepFrom(order, { section: 1, index: 0 }, 1), undefined);
  assert.deepEqual(edgeOf(order, { section: 0, index: 1 }, 1), { section: 0, index: 2 });
});

test('sections and rows are named by their texts, or by their number if they have none', () => {
  const nodes = {
    1: { kind: 'table', children: ['2', '3', '9'] }, 2: { kind: 'section', header: 'Enabled modules:', children: ['4', '5'] },
    3: { kind: 'section', children: [] }, 9: { kind: 'view', children: [] }, 4: { kind: 'row', title: 'Audio', children: [] },
    5: { kind: 'row', children: ['6'] }, 6: { kind: 'cell', text: { string: 'Media' }, children: [] },
  };
  const tree = { root: '1', nodes };
  const found = orderOf(tree, '1');
  assert.deepEqual(found, [{ id: '2', rows: ['4', '5'] }, { id: '3', rows: [] }]);
  assert.equal(sectionName(tree, found, 0), 'Enabled modules');
  assert.equal(sectionName(tree, found, 1), 'section 2');
  assert.equal(spotText(tree, found, spotOf(found, '5')), '2 of 2 in Enabled modules');
  assert.deepEqual(['4', '5', '7'].map((row) => rowName(tree, row)), ['Audio', 'Media', 'the row']);
});
