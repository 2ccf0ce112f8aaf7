import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { stopByKey } = await importSource('components/stops');

test('arrow keys lead to the neighbours and wrap around', () => {
  assert.equal(stopByKey('ArrowRight', 0, 3, 'sideways'), 1);
  assert.equal(stopByKey('ArrowRight', 2, 3, 'sideways'), 0);
  assert.equal(stopByKey('ArrowLeft', 0, 3, 'sideways'), 2);
  assert.equal(stopByKey('ArrowDown', 1, 3, 'any'), 2);
  assert.equal(stopByKey('ArrowUp', 1, 3, 'any'), 0);
});

test('Home and End lead to the ends', () => {
  assert.equal(stopByKey('Home', 2, 3, 'sideways'), 0);
  assert.equal(stopByKey('End', 0, 3, 'any'), 2);
});

test('other keys have no effect, and the up and down keys only if enabled', () => {
  for (const key of ['ArrowUp', 'ArrowDown', 'Enter', ' ', 'toString']) assert.equal(stopByKey(key, 1, 3, 'sideways'), undefined, key);
  assert.equal(stopByKey('Enter', 1, 3, 'any'), undefined);
});

test('without stops no key has an effect', () => {
  for (const key of ['Home', 'End', 'ArrowRight']) assert.equal(stopByKey(key, 0, 0, 'any'), undefined, key);
});
