// The grid of the colour picker: a row of greys, and twelve hues from dark to light.

import { html, type TemplateResult } from 'lit';
import { styled } from '../directives/styled.js';
import { colorName, hexOf, rgbOf } from './picked-color.js';

const columns = 12;
const hues = [197, 220, 255, 285, 338, 6, 20, 36, 46, 56, 70, 100];
const lightnesses = [0.15, 0.22, 0.3, 0.38, 0.46, 0.55, 0.66, 0.78, 0.89];

type Rgb = [number, number, number];

const greys: Rgb[] = hues.map((_, place) => {
  const level = 1 - place / (columns - 1);
  return [level, level, level];
});

const gridColors: Rgb[] = [
  ...greys,
  ...lightnesses.flatMap((lightness) => hues.map((hue) => rgbOf({ hue, saturation: 0.95, lightness }))),
];

export function colorGrid(rgba: readonly number[], pick: (rgb: Rgb) => void): TemplateResult {
  const chosen = gridColors.findIndex((color) => hexOf(color) === hexOf(rgba));
  const stop = Math.max(0, chosen);
  const rows = Array.from({ length: gridColors.length / columns }, (_, row) => row * columns);
  const cell = (place: number): TemplateResult => {
    const color = gridColors[place] ?? [0, 0, 0];
    return html`<button type="button" role="gridcell" class="color-cell" tabindex=${place === stop ? 0 : -1}
      data-color=${hexOf(color)} aria-label="${colorName(color)}, ${hexOf(color)}" aria-selected=${place === chosen}
      ${styled({ '--cell': `#${hexOf(color)}` })} @click=${() => pick(color)}></button>`;
  };
  return html`<div class="color-grid" role="grid" aria-label="Colors" @keydown=${walk}>
    ${rows.map((first) => html`<div role="row" class="color-row">${Array.from({ length: columns }, (_, place) => cell(first + place))}</div>`)}
  </div>`;
}

function walk(event: KeyboardEvent): void {
  const cells = [...(event.currentTarget as HTMLElement).querySelectorAll<HTMLElement>('.color-cell')];
  const now = cells.indexOf(event.target as HTMLElement);
  const ways: Record<string, number> = {
    ArrowLeft: now - 1, ArrowRight: now + 1, ArrowUp: now - columns, ArrowDown: now + columns,
    Home: now - (now % columns), End: now - (now % columns) + columns - 1,
  };
  const goal = cells[ways[event.key] ?? -1];
  if (!goal) return;
  event.preventDefault();
  goal.focus();
}
