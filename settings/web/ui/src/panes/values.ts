// Formats values of property lists for display.

import { NumberText } from '../protocol/messages.js';

export interface ShownValue { type: string; text: string }

/** The type and the spelling of a value, given as JSON in the form of docs/tree.md. */
export function shownValue(value: unknown): ShownValue {
  if (value === undefined || value === null) return { type: '', text: 'none' };
  if (typeof value === 'boolean') return { type: 'boolean', text: value ? 'true' : 'false' };
  if (typeof value === 'string') return { type: 'string', text: value === '' ? '(empty)' : value };
  if (value instanceof NumberText) return numberText(value.source);
  if (typeof value === 'number') return numberText(String(value));
  if (Array.isArray(value)) return { type: 'array', text: nested(value) };
  return special(value as Record<string, unknown>) ?? { type: 'dictionary', text: nested(value) };
}

function numberText(source: string): ShownValue {
  return { type: /[.eE]/.test(source) ? 'real' : 'integer', text: source };
}

// A value that JSON cannot express is an object with one member, which names the type.
function special(value: Record<string, unknown>): ShownValue | undefined {
  const [member, ...more] = Object.entries(value);
  if (!member || more.length > 0) return undefined;
  const [type, content] = member;
  if (type === 'date' || type === 'real') return { type, text: String(content) };
  if (type !== 'data') return undefined;
  if (content instanceof NumberText || typeof content === 'number') return { type, text: `${plain(content)} bytes` };
  return { type, text: typeof content === 'string' ? content : nested(content) };
}

function nested(value: unknown): string {
  return JSON.stringify(plain(value), null, 2);
}

function plain(value: unknown): unknown {
  if (value instanceof NumberText) return Number(value.source);
  if (Array.isArray(value)) return value.map(plain);
  if (typeof value !== 'object' || value === null) return value;
  return Object.fromEntries(Object.entries(value).map(([key, each]) => [key, plain(each)]));
}
