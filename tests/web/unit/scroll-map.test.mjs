import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { anchorsOf, toPage, toTable } = await importSource('components/scroll-map');

// A header of 100 on both sides; a row of 44 that is 88 high on the page; a row of 44 on both, 20 lower.
const anchors = anchorsOf([
  { page: 100, pageHeight: 88, table: 100, tableHeight: 44 },
  { page: 208, pageHeight: 44, table: 154, tableHeight: 44 },
], 300, 230);

test('above the content and below it, a point is a point', () => {
  assert.equal(toTable(anchors, -50), -50);
  assert.equal(toTable(anchors, 310), 240);
  assert.equal(toPage(anchors, 240), 310);
});

test('a row begins and ends where it does on the other side, and its middle is its middle', () => {
  assert.equal(toTable(anchors, 100), 100);
  assert.equal(toTable(anchors, 144), 122);
  assert.equal(toTable(anchors, 188), 144);
  assert.equal(toTable(anchors, 208), 154);
});

test('what is mapped there and back is where it was', () => {
  for (const place of [-20, 0, 60, 120, 190, 215, 299, 320]) {
    assert.ok(Math.abs(toPage(anchors, toTable(anchors, place)) - place) < 1e-9, `${place}`);
  }
});

test('content of which nothing is known is the same on both sides', () => {
  assert.equal(toTable(anchorsOf([], 0, 0), 17), 17);
  assert.equal(toTable(anchorsOf([], 500, 500), 17), 17);
});

test('what the other side has no room for maps to one place', () => {
  const flat = anchorsOf([{ page: 0, pageHeight: 44, table: 0, tableHeight: 0 }], 44, 0);
  assert.equal(toTable(flat, 30), 0);
});
