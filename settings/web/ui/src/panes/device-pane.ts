// The device's traits, and controls that change them.

import { html, nothing, type TemplateResult } from 'lit';
import { live } from 'lit/directives/live.js';
import { parseTint } from '../components/color.js';
import type { Context } from '../components/context.js';
import { restart } from '../components/icons.js';

const screens: [string, string][] = [
  ['390x844@3', 'Phone, 390 × 844'],
  ['375x667@2', 'Small phone, 375 × 667'],
  ['430x932@3', 'Large phone, 430 × 932'],
  ['820x1180@2', 'Tablet, 820 × 1180'],
  ['1180x820@2', 'Tablet on its side, 1180 × 820'],
];
const systems = ['13.7', '14.0', '15.4', '16.5'];
const textScales: [string, string][] = [['0.82', 'Small'], ['1', 'Standard'], ['1.24', 'Large'], ['1.65', 'Very large'], ['2.35', 'Largest']];

export function devicePane(context: Context): TemplateResult {
  const { device } = context.tree;
  const { width = 390, height = 844, scale = 3 } = device.screen ?? {};
  const tint = `#${parseTint(device.tint).map((part) => part.toString(16).padStart(2, '0')).join('')}`;
  return html`<div class="traits">
    ${choice(context, 'idiom', 'Device', [['phone', 'Phone'], ['pad', 'Tablet']], device.idiom ?? 'phone')}
    ${choice(context, 'screen', 'Screen', screens, `${width}x${height}@${scale}`)}
    ${choice(context, 'system', 'System', systems.map((each) => [each, each]), device.system ?? '')}
    ${choice(context, 'appearance', 'Appearance', [['light', 'Light'], ['dark', 'Dark']], device.appearance ?? 'light')}
    ${choice(context, 'text', 'Text size', textScales, String(device.textScale ?? 1))}
    <label class="trait"><span>Tint</span><input type="color" data-trait="tint" .value=${live(tint)}
      @change=${(event: Event) => setTrait(context, 'tint', `${(event.target as HTMLInputElement).value.slice(1).toUpperCase()}FF`)}></label>
  </div>
  ${neighbours(context)}
  <button class="pane-button" type="button" data-action="reopen" @click=${() => void context.act({ action: 'reopen' })}>
    ${restart()}Open Settings anew
  </button>`;
}

/** A value that is not on the list is shown as it is. */
function choice(context: Context, name: string, label: string, values: [string, string][], current: string): TemplateResult {
  const all: [string, string][] = values.some(([value]) => value === current) ? values : [...values, [current, current]];
  return html`<label class="trait"><span>${label}</span><span class="choice"><select data-trait=${name} .value=${live(current)}
    @change=${(event: Event) => setTrait(context, name, (event.target as HTMLSelectElement).value)}>
    ${all.map(([value, title]) => html`<option value=${value} ?selected=${value === current}>${title}</option>`)}
  </select></span></label>`;
}

function setTrait(context: Context, name: string, value: string): void {
  void context.act({ action: 'trait', name, value });
}

/** The stand-ins for other products' classes, which pages find by name and must do without where they are not installed. */
function neighbours(context: Context): TemplateResult | typeof nothing {
  const all = Object.entries(context.tree.device.neighbours ?? {});
  if (all.length === 0) return nothing;
  return html`<details class="neighbours"><summary>Neighbours</summary>
    <p>Classes of other products that the pages look for. They come and go when Settings is opened anew.</p>
    ${all.map(([name, isOn]) => html`<label><input type="checkbox" data-neighbour=${name} .checked=${live(isOn)}
      @change=${(event: Event) => setTrait(context, 'neighbour', `${name} ${(event.target as HTMLInputElement).checked ? 'on' : 'off'}`)}>${name}</label>`)}
  </details>`;
}
