import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { shownValue } = await importSource('panes/values');
const { parseMessage } = await importSource('protocol/messages');

test('values are shown with their type in the property list', () => {
  assert.deepEqual(shownValue(true), { type: 'boolean', text: 'true' });
  assert.deepEqual(shownValue(''), { type: 'string', text: '(empty)' });
  assert.deepEqual(shownValue({ data: 12 }), { type: 'data', text: '12 bytes' });
  assert.deepEqual(shownValue({ date: '2026-01-02T03:04:05Z' }), { type: 'date', text: '2026-01-02T03:04:05Z' });
  assert.deepEqual(shownValue({ real: 'nan' }), { type: 'real', text: 'nan' });
  assert.deepEqual(shownValue(['a', 1]), { type: 'array', text: '[\n  "a",\n  1\n]' });
  assert.equal(shownValue({ a: 1, b: 2 }).type, 'dictionary');
  assert.deepEqual(shownValue(undefined), { type: '', text: 'none' });
});

test('text that is not a message of the server is ignored', () => {
  for (const text of ['', '{', '[]', 'null', '{"type":7}']) assert.equal(parseMessage(text), undefined, text);
});
