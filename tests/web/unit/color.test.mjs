import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { cssColor, parseTint, readable } = await importSource('components/color');

test('a named colour is left to the style sheet, a colour by components is written out', () => {
  assert.equal(cssColor({ name: 'systemRedColor' }), 'var(--systemRed, currentcolor)');
  assert.equal(cssColor({ rgba: [1, 0.5, 0, 0.25] }), 'rgb(255 128 0 / 0.25)');
  assert.equal(cssColor({ rgba: [2, -1, 0, 1] }), 'rgb(255 0 0 / 1)');
  assert.equal(cssColor(undefined), undefined);
});

test('the tint is read, with the platform\'s blue as the default', () => {
  assert.deepEqual(parseTint('FF8000FF'), [255, 128, 0]);
  assert.deepEqual(parseTint(undefined), [0, 122, 255]);
  assert.deepEqual(parseTint('blue'), [0, 122, 255]);
});

function contrast(a, b) {
  const luminance = (color) => {
    const [red, green, blue] = color.map((value) => (value / 255 <= 0.03928 ? value / 255 / 12.92 : ((value / 255 + 0.055) / 1.055) ** 2.4));
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
  };
  const [low, high] = [luminance(a), luminance(b)].sort((x, y) => x - y);
  return (high + 0.05) / (low + 0.05);
}

test('text in any colour has a contrast of 4.5 to 1 on the backgrounds of the pages', () => {
  for (const color of [[0, 122, 255], [255, 204, 0], [255, 255, 255], [0, 0, 0], [52, 199, 89]]) {
    for (const ground of [[255, 255, 255], [242, 242, 247]]) assert.ok(contrast(readable(color, 'light'), ground) >= 4.5, `${color}`);
    for (const ground of [[0, 0, 0], [28, 28, 30]]) assert.ok(contrast(readable(color, 'dark'), ground) >= 4.5, `${color}`);
  }
});
