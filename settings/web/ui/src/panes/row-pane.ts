// The specifier behind the row that was last under the pointer.

import { html, nothing, type TemplateResult } from 'lit';
import { warning } from '../components/icons.js';
import type { RowInfo } from '../protocol/messages.js';
import type { Sides } from '../protocol/state.js';
import { entry } from './entries.js';
import { shownValue } from './values.js';

export function rowPane(sides: Sides): TemplateResult {
  const { row } = sides;
  if (!row) return html`<p class="pane-empty">Point at a row, or focus it, to see the specifier behind it. Press <kbd>i</kbd> to open this pane.</p>`;
  const keys = Object.keys(row.properties ?? {}).sort();
  return html`
    ${row.problem ? html`<div class="file-problem">${warning()}<p>${row.problem}</p></div>` : nothing}
    <dl class="facts">${facts(row).map(([title, text]) => html`<dt>${title}</dt><dd><code>${text}</code></dd>`)}</dl>
    ${keys.length === 0 ? html`<p class="pane-empty">There is no specifier behind this row.</p>` : properties(row, keys)}`;
}

/** The members of a specifier besides its properties; absent members are omitted. */
function facts(row: RowInfo): [string, string][] {
  const all: [string, string | null | undefined][] = [
    ['Identifier', row.identifier ?? 'none'], ['Cell', row.cellType], ['Action', row.action],
    ['Getter', row.getter], ['Setter', row.setter], ['Detail', row.detail],
    ['Value', row.value === undefined || row.value === null ? undefined : shownValue(row.value).text],
  ];
  return all.filter((fact): fact is [string, string] => Boolean(fact[1]));
}

function properties(row: RowInfo, keys: string[]): TemplateResult {
  return html`<table class="entries">
    <thead><tr><th scope="col">Property</th><th scope="col">Type</th><th scope="col">Value</th></tr></thead>
    <tbody>${keys.map((key) => entry(key, row.properties?.[key]))}</tbody>
  </table>`;
}
