// The sliders of the colour picker: red, green and blue, each with a field, and a field with hexadecimal
// digits. The opacity slider is separate.

import { html, nothing, type TemplateResult } from 'lit';
import { live } from 'lit/directives/live.js';
import { styled } from '../directives/styled.js';
import { byteOf, hexOf, parseHex, type Rgba } from './picked-color.js';

const channels = ['Red', 'Green', 'Blue'] as const;

type Pick = (rgba: Rgba) => void;

export function colorSliders(rgba: Rgba, pick: Pick): TemplateResult {
  return html`${channels.map((name, place) => channel(rgba, name, place, 255, pick))}
    <label class="color-hex"><span>Hex color</span>
      <span class="hex-field">#<input type="text" spellcheck="false" autocomplete="off" autocapitalize="characters" maxlength="7"
        .value=${live(hexOf(rgba))} @change=${(event: Event) => takeHex(event, rgba, pick)}></span></label>`;
}

export function opacitySlider(rgba: Rgba, pick: Pick): TemplateResult {
  return channel(rgba, 'Opacity', 3, 100, pick);
}

function channel(rgba: Rgba, name: string, place: number, most: number, pick: Pick): TemplateResult {
  const value = Math.round(Math.min(1, Math.max(0, rgba[place] ?? 0)) * most);
  const take = (event: Event): void => {
    const given = Number((event.target as HTMLInputElement).value);
    const share = Number.isFinite(given) ? Math.min(1, Math.max(0, given / most)) : (rgba[place] ?? 0);
    const next: Rgba = [...rgba];
    next[place] = share;
    pick(next);
  };
  return html`<div class="color-channel" role="group" aria-label=${name}>
    <span class="channel-name" aria-hidden="true">${name}</span>
    <input class="channel-slider" type="range" min="0" max=${most} step="1" aria-label=${name} .value=${live(String(value))}
      ${styled(track(rgba, place))} @input=${take}>
    <span class="channel-field"><input type="text" inputmode="numeric" maxlength="3" aria-label="${name} as a number"
      .value=${live(String(value))} @change=${take}>${most === 100 ? html`<i aria-hidden="true">%</i>` : nothing}</span>
  </div>`;
}

// The track shows the colours between the slider's two ends.
function track(rgba: Rgba, place: number): Record<string, string> {
  const end = (component: number): string => {
    const [red, green, blue, alpha] = rgba.map((each, index) => (index === place ? component : each));
    return `rgb(${byteOf(red)} ${byteOf(green)} ${byteOf(blue)} / ${place === 3 ? alpha : 1})`;
  };
  return { '--from': end(0), '--to': end(1) };
}

function takeHex(event: Event, rgba: Rgba, pick: Pick): void {
  const field = event.target as HTMLInputElement;
  const rgb = parseHex(field.value);
  if (rgb) pick([...rgb, rgba[3]]);
  else field.value = hexOf(rgba);
}
