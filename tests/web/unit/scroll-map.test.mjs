import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { anchorsOf, toPage, toTable } = await importSource('components/scroll-map');

// A header of 100 on both sides; a row of 44 that is 88 high on the page; a row of 44 on both, 20 lower.
const anchors = anchorsOf([
  { page: 100, pageHeight: 88, table: 100, tableHeight: 44 },
  { page: 208, pageHeight: 44, table: 154, tableHeight: 44 },
], 300, 230);

test('above and below the content, distances are equal on both sides', () => {
  assert.equal(toTable(anchors, -50), -50);
  assert.equal(toTable(anchors, 310), 240);
  assert.equal(toPage(anchors, 240), 310);
});

test('the beginning, middle and end of a row map to those on the other side', () => {
  assert.equal(toTable(anchors, 100), 100);
  assert.equal(toTable(anchors, 144), 122);
  assert.equal(toTable(anchors, 188), 144);
  assert.equal(toTable(anchors, 208), 154);
});

test('mapping a position there and back returns it', () => {
  for (const place of [-20, 0, 60, 120, 190, 215, 299, 320]) {
    assert.ok(Math.abs(toPage(anchors, toTable(anchors, place)) - place) < 1e-9, `${place}`);
  }
});

test('unknown content is the same on both sides', () => {
  assert.equal(toTable(anchorsOf([], 0, 0), 17), 17);
  assert.equal(toTable(anchorsOf([], 500, 500), 17), 17);
});

test('content without height on the other side maps to one position', () => {
  const flat = anchorsOf([{ page: 0, pageHeight: 44, table: 0, tableHeight: 0 }], 44, 0);
  assert.equal(toTable(flat, 30), 0);
});
