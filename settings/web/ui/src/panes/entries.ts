// A table of keys and values.

import { html, nothing, type TemplateResult } from 'lit';
import { shownValue } from './values.js';

/** A row of the table; a value with several lines gets a separate row below. */
export function entry(key: string, value: unknown, className = ''): TemplateResult {
  const { type, text } = shownValue(value);
  const nested = isNested(text);
  return html`<tr class=${className} data-key=${key}>
      <th scope="row"><code>${key}</code></th><td>${type}</td><td class="value">${nested ? itemCount(value) : text}</td>
    </tr>${nested ? html`<tr class="nested ${className}"><td colspan="3"><pre>${text}</pre></td></tr>` : nothing}`;
}

/** True if the spelling of a value has several lines. */
export function isNested(text: string): boolean {
  return text.includes('\n');
}

/** A path that may wrap after each slash. */
export function breakable(path: string): TemplateResult[] {
  return path.split(/(?<=\/)/).map((part) => html`${part}<wbr>`);
}

function itemCount(value: unknown): string {
  if (typeof value !== 'object' || value === null) return '';
  const count = Object.keys(value).length;
  return count === 1 ? '1 item' : `${count} items`;
}
