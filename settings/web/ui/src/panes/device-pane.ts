// The device's traits, and controls that change them.

import { html, nothing, type TemplateResult } from 'lit';
import { live } from 'lit/directives/live.js';
import { parseTint } from '../components/color.js';
import type { Context } from '../components/context.js';
import { restart } from '../components/icons.js';
import type { Trait } from '../protocol/tree.js';

export function devicePane(context: Context): TemplateResult {
  return html`<div class="traits">${(context.tree.traits ?? []).map((trait) => trait.choices.length > 0 ? choice(context, trait) : colour(context, trait))}
  </div>
  ${neighbours(context)}
  <button class="pane-button" type="button" data-action="reopen" @click=${() => void context.act({ action: 'reopen' })}>
    ${restart()}Reopen Settings
  </button>`;
}

/** A value that is not in the list is shown unchanged. */
function choice(context: Context, { name, label, value: current, choices }: Trait): TemplateResult {
  const all = choices.some(([value]) => value === current) ? choices : [...choices, [current, current]];
  return html`<label class="trait"><span>${label}</span><span class="choice"><select data-trait=${name} .value=${live(current)}
    @change=${(event: Event) => setTrait(context, name, (event.target as HTMLSelectElement).value)}>
    ${all.map(([value, title]) => html`<option value=${value} ?selected=${value === current}>${title}</option>`)}
  </select></span></label>`;
}

/** The browser's colour field does not support alpha. */
function colour(context: Context, { name, label, value }: Trait): TemplateResult {
  const shown = `#${parseTint(value).map((part) => part.toString(16).padStart(2, '0')).join('')}`;
  return html`<label class="trait"><span>${label}</span><input type="color" data-trait=${name} .value=${live(shown)}
    @change=${(event: Event) => setTrait(context, name, `${(event.target as HTMLInputElement).value.slice(1).toUpperCase()}FF`)}></label>`;
}

function setTrait(context: Context, name: string, value: string): void {
  void context.act({ action: 'trait', name, value });
}

/** The stand-ins for other products' classes. Pages find them by name and must work without them. */
function neighbours(context: Context): TemplateResult | typeof nothing {
  const all = Object.entries(context.tree.device.neighbours ?? {});
  if (all.length === 0) return nothing;
  return html`<details class="neighbours"><summary>Neighbours</summary>
    <p>Classes of other products that the pages look for. A change takes effect when Settings is reopened.</p>
    ${all.map(([name, isOn]) => html`<label><input type="checkbox" data-neighbour=${name} .checked=${live(isOn)}
      @change=${(event: Event) => setTrait(context, 'neighbour', `${name} ${(event.target as HTMLInputElement).checked ? 'on' : 'off'}`)}>${name}</label>`)}
  </details>`;
}
