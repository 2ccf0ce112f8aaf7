import assert from 'node:assert/strict';
import { test } from 'node:test';
import { importSource } from '../support/source.mjs';

const { applyPatch, parsePointer, PatchError } = await importSource('protocol/patch');

test('a pointer is split and unescaped, "~1" before "~0"', () => {
  assert.deepEqual(parsePointer(''), []);
  assert.deepEqual(parsePointer('/'), ['']);
  assert.deepEqual(parsePointer('/a~1b/m~0n/~01'), ['a/b', 'm~n', '~1']);
  assert.throws(() => parsePointer('a'), PatchError);
  assert.throws(() => parsePointer('/~2'), PatchError);
});

test('add sets a member, replaces an existing one, and inserts into a list', () => {
  assert.deepEqual(applyPatch({ a: 1 }, [{ op: 'add', path: '/b', value: 2 }]), { a: 1, b: 2 });
  assert.deepEqual(applyPatch({ a: 1 }, [{ op: 'add', path: '/a', value: 2 }]), { a: 2 });
  assert.deepEqual(applyPatch({ a: [1, 3] }, [{ op: 'add', path: '/a/1', value: 2 }]), { a: [1, 2, 3] });
  assert.deepEqual(applyPatch({ a: [1] }, [{ op: 'add', path: '/a/-', value: 2 }]), { a: [1, 2] });
  assert.deepEqual(applyPatch({ a: 1 }, [{ op: 'add', path: '', value: [] }]), []);
  for (const path of ['/a/3', '/a/-1', '/a/01', '/a/x', '/b/c']) {
    assert.throws(() => applyPatch({ a: [1, 2] }, [{ op: 'add', path, value: 0 }]), PatchError, path);
  }
});

test('remove and replace need an existing value', () => {
  assert.deepEqual(applyPatch({ a: 1, b: 2 }, [{ op: 'remove', path: '/a' }]), { b: 2 });
  assert.deepEqual(applyPatch([1, 2, 3], [{ op: 'remove', path: '/1' }]), [1, 3]);
  assert.deepEqual(applyPatch({ a: [1, 2] }, [{ op: 'replace', path: '/a/1', value: null }]), { a: [1, null] });
  for (const [document, path] of [[{ a: 1 }, '/b'], [[1], '/1'], [[1], '/-'], [{ a: 1 }, '/a/b'], [{}, '/toString']]) {
    assert.throws(() => applyPatch(document, [{ op: 'remove', path }]), PatchError, path);
    assert.throws(() => applyPatch(document, [{ op: 'replace', path, value: 0 }]), PatchError, path);
  }
});

test('move removes the old value, copy keeps it, and neither works into itself', () => {
  assert.deepEqual(applyPatch({ a: { b: 1 } }, [{ op: 'move', from: '/a/b', path: '/c' }]), { a: {}, c: 1 });
  assert.deepEqual(applyPatch([1, 2, 3], [{ op: 'move', from: '/0', path: '/2' }]), [2, 3, 1]);
  const copied = applyPatch({ a: { b: [1] } }, [{ op: 'copy', from: '/a', path: '/c' }, { op: 'add', path: '/c/b/-', value: 2 }]);
  assert.deepEqual(copied, { a: { b: [1] }, c: { b: [1, 2] } });
  assert.throws(() => applyPatch({ a: {} }, [{ op: 'move', from: '/a', path: '/a/b' }]), PatchError);
});

test('test compares values, not the order of members', () => {
  const document = { a: { x: 1, y: [null, 'z'] } };
  assert.equal(applyPatch(document, [{ op: 'test', path: '/a', value: { y: [null, 'z'], x: 1 } }]).a, document.a);
  for (const value of [{ x: 1 }, { x: 1, y: [null] }, { x: '1', y: [null, 'z'] }, [1], null]) {
    assert.throws(() => applyPatch(document, [{ op: 'test', path: '/a', value }]), PatchError);
  }
});

test('the old document is unchanged, even if a later operation fails', () => {
  const document = { nodes: { 1: { on: false }, 2: { on: true } }, list: [1] };
  const before = structuredClone(document);
  const after = applyPatch(document, [{ op: 'replace', path: '/nodes/1/on', value: true }, { op: 'add', path: '/list/-', value: 2 }]);
  assert.deepEqual(document, before);
  assert.deepEqual(after, { nodes: { 1: { on: true }, 2: { on: true } }, list: [1, 2] });
  assert.throws(() => applyPatch(document, [{ op: 'remove', path: '/list/0' }, { op: 'remove', path: '/none' }]), PatchError);
  assert.deepEqual(document, before);
});

test('unchanged parts are shared with the old document', () => {
  const document = { nodes: { 1: { on: false }, 2: { on: true } } };
  const after = applyPatch(document, [{ op: 'replace', path: '/nodes/1/on', value: true }]);
  assert.notEqual(after.nodes[1], document.nodes[1]);
  assert.equal(after.nodes[2], document.nodes[2]);
});

test('a member called "__proto__" is a member like any other', () => {
  const after = applyPatch({}, [{ op: 'add', path: '/__proto__', value: { polluted: true } }]);
  assert.equal(Object.getPrototypeOf(after), Object.prototype);
  assert.equal({}.polluted, undefined);
});

test('an unknown operation is refused', () => {
  assert.throws(() => applyPatch({}, [{ op: 'swap', path: '' }]), PatchError);
});
