// The spectrum of the colour picker: hues from left to right, white at the top, black at the bottom.

import { html, type TemplateResult } from 'lit';
import { styled } from '../directives/styled.js';
import { colorName, hexOf, hslOf, rgbOf } from './picked-color.js';

const hueStep = 3;
const lightnessStep = 0.02;
const fullTurn = 359.9;

type Rgb = [number, number, number];

export function colorSpectrum(rgba: readonly number[], pick: (rgb: Rgb) => void): TemplateResult {
  const { hue, saturation, lightness } = hslOf(rgba);
  const at = (event: PointerEvent): void => {
    const area = event.currentTarget as HTMLElement;
    if (event.type === 'pointerdown') area.setPointerCapture(event.pointerId);
    else if (!area.hasPointerCapture(event.pointerId)) return;
    const box = area.getBoundingClientRect();
    const share = (from: number, length: number, place: number): number => Math.min(1, Math.max(0, (place - from) / length));
    const x = share(box.left, box.width, event.clientX);
    const y = share(box.top, box.height, event.clientY);
    pick(rgbOf({ hue: x * fullTurn, saturation: 1, lightness: 1 - y }));
  };
  const key = (event: KeyboardEvent): void => {
    const goal = moveBy(event.key, hue, lightness);
    if (!goal) return;
    event.preventDefault();
    pick(rgbOf({ ...goal, saturation: saturation || 1 }));
  };
  return html`<div class="color-spectrum" role="slider" tabindex="0" aria-label="Spectrum: hue to the sides, lightness up and down"
    aria-valuemin="0" aria-valuemax="360" aria-valuenow=${Math.round(hue)}
    aria-valuetext="${colorName(rgba)}, hue ${Math.round(hue)}°, lightness ${Math.round(lightness * 100)} %"
    @pointerdown=${at} @pointermove=${at} @keydown=${key}>
    <span class="color-marker" ${styled({ left: `${(hue / 360) * 100}%`, top: `${(1 - lightness) * 100}%`, 'background-color': `#${hexOf(rgba)}` })}></span>
  </div>`;
}

function moveBy(key: string, hue: number, lightness: number): { hue: number; lightness: number } | undefined {
  const turned = (by: number): number => (hue + by + 360) % 360;
  const lit = (by: number): number => Math.min(1, Math.max(0, lightness + by));
  switch (key) {
    case 'ArrowLeft': return { hue: turned(-hueStep), lightness };
    case 'ArrowRight': return { hue: turned(hueStep), lightness };
    case 'ArrowUp': return { hue, lightness: lit(lightnessStep) };
    case 'ArrowDown': return { hue, lightness: lit(-lightnessStep) };
    default: return undefined;
  }
}
