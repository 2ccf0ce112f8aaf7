// Applies RFC 6902 patches. A patch is applied completely or not at all. The old document is not
// modified; unchanged parts are shared between the old and the new document, so a view can detect
// changes by identity.

export type Json = null | boolean | number | string | Json[] | { [key: string]: Json };

export type Operation =
  | { op: 'add' | 'replace' | 'test'; path: string; value: unknown }
  | { op: 'remove'; path: string }
  | { op: 'move' | 'copy'; from: string; path: string };

/** Thrown if a patch does not fit the document. Nothing of the patch has been applied. */
export class PatchError extends Error {
  override name = 'PatchError';
}

type Container = unknown[] | Record<string, unknown>;

/** The reference tokens of a JSON pointer (RFC 6901). The empty pointer is the whole document. */
export function parsePointer(pointer: string): string[] {
  if (pointer === '') return [];
  if (!pointer.startsWith('/')) throw new PatchError(`"${pointer}" is not a JSON pointer`);
  return pointer.slice(1).split('/').map(unescapeToken);
}

function unescapeToken(token: string): string {
  if (/~(?![01])/.test(token)) throw new PatchError(`"${token}" has a stray "~"`);
  return token.replace(/~1/g, '/').replace(/~0/g, '~');
}

/** Returns the document after all operations. @throws PatchError if one of them cannot be applied. */
export function applyPatch<T>(document: T, operations: readonly Operation[]): T {
  const draft = new Draft(document);
  for (const operation of operations) draft.apply(operation);
  return draft.root as T;
}

class Draft {
  root: unknown;
  // The containers that this draft created and may therefore change in place.
  private readonly _own = new Set<Container>();

  constructor(root: unknown) {
    this.root = root;
  }

  apply(operation: Operation): void {
    switch (operation.op) {
      case 'add': return this._add(operation.path, operation.value);
      case 'replace': return this._replace(operation.path, operation.value);
      case 'remove': return void this._remove(operation.path);
      case 'move': return this._move(operation.from, operation.path);
      case 'copy': return this._add(operation.path, structuredClone(this._get(operation.from)));
      case 'test': return this._test(operation.path, operation.value);
      default: throw new PatchError(`unknown operation "${(operation as { op: string }).op}"`);
    }
  }

  private _get(pointer: string): unknown {
    let value = this.root;
    for (const token of parsePointer(pointer)) value = member(value, token, pointer);
    return value;
  }

  /** A mutable copy of the container that holds the last token. */
  private _writableParent(pointer: string): { parent: Container; token: string } {
    const tokens = parsePointer(pointer);
    const token = tokens.pop();
    if (token === undefined) throw new PatchError('the whole document has no parent');
    let parent = (this.root = this._writable(this.root, pointer));
    for (const step of tokens) {
      const child = this._writable(member(parent, step, pointer), pointer);
      setMember(parent, step, child);
      parent = child;
    }
    return { parent, token };
  }

  private _writable(value: unknown, pointer: string): Container {
    if (typeof value !== 'object' || value === null) throw new PatchError(`"${pointer}" leads through a plain value`);
    const container = value as Container;
    if (this._own.has(container)) return container;
    const copy = Array.isArray(container) ? container.slice() : { ...container };
    this._own.add(copy);
    return copy;
  }

  private _add(pointer: string, value: unknown): void {
    if (pointer === '') {
      this.root = value;
      return;
    }
    const { parent, token } = this._writableParent(pointer);
    if (Array.isArray(parent)) {
      parent.splice(token === '-' ? parent.length : arrayIndex(token, parent.length, pointer), 0, value);
    } else {
      setMember(parent, token, value);
    }
  }

  private _replace(pointer: string, value: unknown): void {
    if (pointer === '') {
      this.root = value;
      return;
    }
    const { parent, token } = this._writableParent(pointer);
    member(parent, token, pointer);
    setMember(parent, token, value);
  }

  private _remove(pointer: string): unknown {
    const { parent, token } = this._writableParent(pointer);
    const value = member(parent, token, pointer);
    if (Array.isArray(parent)) parent.splice(Number(token), 1);
    else delete parent[token];
    return value;
  }

  private _move(from: string, path: string): void {
    if (path !== from && path.startsWith(`${from}/`)) throw new PatchError(`"${from}" cannot move into itself`);
    if (path === from) return void this._get(from);
    this._add(path, this._remove(from));
  }

  private _test(pointer: string, expected: unknown): void {
    if (!sameJson(this._get(pointer), expected)) throw new PatchError(`"${pointer}" does not have the expected value`);
  }
}

function member(value: unknown, token: string, pointer: string): unknown {
  if (Array.isArray(value)) return value[arrayIndex(token, value.length - 1, pointer)];
  if (typeof value === 'object' && value !== null && Object.hasOwn(value, token)) {
    return (value as Record<string, unknown>)[token];
  }
  throw new PatchError(`"${pointer}" names nothing`);
}

function arrayIndex(token: string, highest: number, pointer: string): number {
  const index = /^(0|[1-9]\d*)$/.test(token) ? Number(token) : -1;
  if (index < 0 || index > highest) throw new PatchError(`"${pointer}" has no place "${token}"`);
  return index;
}

// Defined, not assigned: a member may be called "__proto__" without touching the prototype.
function setMember(container: Container, token: string, value: unknown): void {
  Object.defineProperty(container, token, { value, writable: true, enumerable: true, configurable: true });
}

function sameJson(a: unknown, b: unknown): boolean {
  if (a === b) return true;
  if (typeof a !== 'object' || typeof b !== 'object' || a === null || b === null) return false;
  if (Array.isArray(a) !== Array.isArray(b)) return false;
  const keys = Object.keys(a);
  return keys.length === Object.keys(b).length
    && keys.every((key) => Object.hasOwn(b, key)
      && sameJson((a as Record<string, unknown>)[key], (b as Record<string, unknown>)[key]));
}
