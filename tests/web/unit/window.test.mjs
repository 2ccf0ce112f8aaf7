import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { isLong, piecesOf, sliceAt } = await importSource('components/window');

const rows = Array.from({ length: 200 }, (_, index) => `r${index}`);
const height = () => 44;

test('the slice contains the rows that overlap the range, in whole steps', () => {
  assert.deepEqual(sliceAt(rows, height, 440, 880), { first: 8, last: 24 });
  assert.deepEqual(sliceAt(rows, height, -900, 10), { first: 0, last: 8 });
  assert.deepEqual(sliceAt(rows, height, 44 * 195, 44 * 400), { first: 192, last: 200 });
});

test('outside of the section the slice is empty, at the nearest end', () => {
  assert.deepEqual(sliceAt(rows, height, -900, -100), { first: 0, last: 0 });
  assert.deepEqual(sliceAt(rows, height, 44 * 300, 44 * 310), { first: 200, last: 200 });
});

test('rows of any height are found', () => {
  assert.deepEqual(sliceAt(rows, (row) => (row === 'r0' ? 4400 : 10), 4405, 4500), { first: 0, last: 16 });
});

test('the pieces are as high as all rows together, whichever rows are kept', () => {
  const pieces = piecesOf(rows, { first: 80, last: 96 }, new Set(['r3', 'r199']), height);
  const shown = pieces.filter((piece) => 'row' in piece).map((piece) => piece.row);
  assert.deepEqual(shown, ['r3', ...rows.slice(80, 96), 'r199']);
  const total = pieces.reduce((sum, piece) => sum + ('height' in piece ? piece.height : 44), 0);
  assert.equal(total, 200 * 44);
  assert.equal(new Set(pieces.map(({ key }) => key)).size, pieces.length);
  assert.deepEqual(piecesOf(rows.slice(0, 3), { first: 0, last: 3 }, new Set(), height).map(({ key }) => key), ['r0', 'r1', 'r2']);
});

test('short sections are completely in the document', () => {
  assert.equal(isLong(rows.slice(0, 100)), false);
  assert.equal(isLong(rows), true);
});
