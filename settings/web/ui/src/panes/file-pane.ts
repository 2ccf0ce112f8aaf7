// The preference file as it is on the disk, with the changes of the last tap.

import { html, nothing, type TemplateResult } from 'lit';
import { keyed } from 'lit/directives/keyed.js';
import { repeat } from 'lit/directives/repeat.js';
import type { FileChange, FileState } from '../protocol/messages.js';
import type { Sides } from '../protocol/state.js';
import { warning } from '../components/icons.js';
import { breakable, entry, isNested } from './entries.js';
import { shownValue } from './values.js';

const stateNames = { ok: 'Saved', missing: 'Missing', problem: 'Damaged' } as const;

export function filePane(sides: Sides): TemplateResult {
  const { file } = sides;
  if (!file) return html`<p class="pane-empty">Waiting for the file…</p>`;
  return html`
    <p class="file-path"><span class="chip ${file.state}">${stateNames[file.state]}</span><code>${breakable(file.path ?? '')}</code></p>
    ${file.state === 'problem' ? html`<div class="file-problem">${warning()}<p>${file.problem ?? 'It cannot be read.'}</p></div>` : nothing}
    ${file.state === 'missing' ? html`<p class="pane-empty">${file.problem || 'The first change creates it.'}</p>` : nothing}
    ${keyed(sides.fileCount, lastChange(file.changed ?? []))}
    ${file.state === 'ok' ? entries(file, sides.fileCount) : nothing}`;
}

function lastChange(changed: FileChange[]): TemplateResult | typeof nothing {
  if (changed.length === 0) return nothing;
  return html`<div class="last-change"><h3>Changed by the last tap</h3><ul>${changed.map((change) => html`<li>
    <code>${change.key}</code>
    ${changedValue('before', change.before)}
    <span class="arrow" role="img" aria-label="becomes">→</span>
    ${changedValue('after', change.after)}
  </li>`)}</ul></div>`;
}

function changedValue(kind: 'before' | 'after', value: unknown): TemplateResult {
  const { text } = shownValue(value);
  return html`<span class="${kind} ${isNested(text) ? 'nested' : ''}">${text}</span>`;
}

function entries(file: FileState, count: number): TemplateResult {
  const keys = Object.keys(file.entries ?? {}).sort();
  if (keys.length === 0) return html`<p class="pane-empty">The file has no keys.</p>`;
  const changed = new Set((file.changed ?? []).map((change) => change.key));
  return html`<table class="entries">
    <thead><tr><th scope="col">Key</th><th scope="col">Type</th><th scope="col">Value</th></tr></thead>
    <tbody>${repeat(keys, (key) => (changed.has(key) ? `${key} ${count}` : key), (key) =>
      entry(key, file.entries?.[key], changed.has(key) ? 'changed' : ''))}</tbody>
  </table>`;
}
