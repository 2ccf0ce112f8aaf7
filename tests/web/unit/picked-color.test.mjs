import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { colorName, hexOf, hslOf, parseComputed, parseHex, rgbOf } = await importSource('components/picked-color');

test('hue, saturation and lightness lead back to the components', () => {
  for (const rgb of [[1, 0, 0], [0.2, 0.5, 0.9], [0, 0, 0], [1, 1, 1], [0.5, 0.5, 0.5], [0.1, 0.9, 0.3], [0.9, 0.1, 0.8]]) {
    rgbOf(hslOf(rgb)).forEach((part, place) => assert.ok(Math.abs(part - rgb[place]) < 1e-9, `${rgb}`));
  }
  assert.deepEqual(rgbOf({ hue: 120, saturation: 1, lightness: 0.5 }), [0, 1, 0]);
});

test('hexadecimal digits are read with and without "#", short and long, and nothing else is', () => {
  assert.deepEqual(parseHex('#FF0000'), [1, 0, 0]);
  assert.deepEqual(parseHex(' 0f0 '), [0, 1, 0]);
  for (const text of ['', '#', 'FF', 'FF00', 'GG0000', 'FF0000FF', 'red']) assert.equal(parseHex(text), undefined, text);
  assert.equal(hexOf([1, 0.5, -2, 1]), 'FF8000');
  for (const hex of ['000000', '0A84FF', 'FFFFFF']) assert.equal(hexOf(parseHex(hex)), hex);
});

test('a computed style is read', () => {
  assert.deepEqual(parseComputed('rgb(255, 0, 51)'), [1, 0, 0.2, 1]);
  assert.deepEqual(parseComputed('rgba(0, 0, 0, 0)'), [0, 0, 0, 0]);
});

test('colours have words', () => {
  assert.equal(colorName([1, 1, 1]), 'white');
  assert.equal(colorName([0, 0, 0]), 'black');
  assert.equal(colorName([0.5, 0.5, 0.5]), 'gray');
  assert.equal(colorName([1, 0, 0]), 'red');
  assert.equal(colorName([0.3, 0, 0]), 'very dark red');
  assert.equal(colorName([0.7, 0.85, 1]), 'very light azure');
});
