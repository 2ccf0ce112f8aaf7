// Converts the tree's colours to CSS colours. Named system colours are custom properties in
// styles/palette.css, so light and dark resolve where they are shown. Text in a colour given by
// components is made darker or lighter until it is readable on its background.

import type { Color } from '../protocol/tree.js';

type Rgb = [number, number, number];

const readableContrast = 4.6;

/** A CSS colour. */
export function cssColor(color: Color | undefined): string | undefined {
  if (!color) return undefined;
  if ('name' in color) return `var(--${color.name.replace(/Color$/, '')}, currentcolor)`;
  const [red, green, blue, alpha] = color.rgba;
  return `rgb(${byte(red)} ${byte(green)} ${byte(blue)} / ${alpha})`;
}

const weights: Record<string, number> = { light: 300, regular: 400, medium: 500, semibold: 600, bold: 700 };

/** The font weight for the platform's name of it. */
export function cssWeight(weight: string | number | undefined): number | undefined {
  return typeof weight === 'string' ? weights[weight] : weight;
}

/** The components of "RRGGBBAA", or of the platform's blue if the text is not a colour. */
export function parseTint(tint: string | undefined): Rgb {
  const match = /^([0-9a-f]{2})([0-9a-f]{2})([0-9a-f]{2})/i.exec(tint ?? '');
  const parts = match?.slice(1).map((part) => parseInt(part, 16)) ?? [0, 122, 255];
  return [parts[0] ?? 0, parts[1] ?? 0, parts[2] ?? 0];
}

/** A colour for text, readable on the backgrounds of the pages. */
export function cssTextColor(color: Color | undefined, ground: 'light' | 'dark'): string | undefined {
  if (!color) return undefined;
  if ('name' in color) {
    const name = color.name.replace(/Color$/, '');
    return `var(--${name}-text, var(--${name}, currentcolor))`;
  }
  const [red, green, blue, alpha] = color.rgba;
  if (alpha < 1) return cssColor(color);
  return cssRgb(readable([byte(red), byte(green), byte(blue)], ground));
}

export function cssRgb([red, green, blue]: Rgb): string {
  return `rgb(${red} ${green} ${blue})`;
}

/** The nearest readable text colour: darker on a light background, lighter on a dark one. */
export function readable(color: Rgb, ground: 'light' | 'dark'): Rgb {
  const worst: Rgb = ground === 'light' ? [242, 242, 247] : [44, 44, 46];
  const goal: Rgb = ground === 'light' ? [0, 0, 0] : [255, 255, 255];
  let mixed = color;
  for (let part = 0; part <= 1 && contrast(mixed, worst) < readableContrast; part += 0.02) {
    mixed = color.map((value, index) => Math.round(value + ((goal[index] ?? 0) - value) * part)) as Rgb;
  }
  return mixed;
}

function contrast(a: Rgb, b: Rgb): number {
  const [low, high] = [luminance(a), luminance(b)].sort((x, y) => x - y) as [number, number];
  return (high + 0.05) / (low + 0.05);
}

function luminance(color: Rgb): number {
  const [red, green, blue] = color.map((value) => {
    const part = value / 255;
    return part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4;
  }) as Rgb;
  return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

function byte(component: number): number {
  return Math.round(Math.min(1, Math.max(0, component)) * 255);
}
