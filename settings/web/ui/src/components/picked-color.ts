// Colours in the form that the colour picker computes with: components from 0 to 1, hues in degrees.

export type Rgba = [number, number, number, number];

/** Hue from 0 to 360, saturation and lightness from 0 to 1. */
export interface Hsl { hue: number; saturation: number; lightness: number }

export function rgbOf({ hue, saturation, lightness }: Hsl): [number, number, number] {
  const reach = saturation * Math.min(lightness, 1 - lightness);
  const component = (turn: number): number => {
    const place = (turn + hue / 30) % 12;
    return lightness - reach * Math.max(-1, Math.min(place - 3, 9 - place, 1));
  };
  return [component(0), component(8), component(4)];
}

export function hslOf([red, green, blue]: readonly number[]): Hsl {
  const [r, g, b] = [red ?? 0, green ?? 0, blue ?? 0];
  const most = Math.max(r, g, b);
  const span = most - Math.min(r, g, b);
  const lightness = most - span / 2;
  if (span === 0) return { hue: 0, saturation: 0, lightness };
  const sixth = most === r ? (g - b) / span : most === g ? (b - r) / span + 2 : (r - g) / span + 4;
  return { hue: (sixth * 60 + 360) % 360, saturation: span / (1 - Math.abs(2 * lightness - 1)), lightness };
}

/** "RRGGBB" in capitals. */
export function hexOf(rgba: readonly number[]): string {
  return [0, 1, 2].map((place) => byteOf(rgba[place]).toString(16).padStart(2, '0')).join('').toUpperCase();
}

/** The components of "RRGGBB" or "RGB", with or without "#"; undefined for any other text. */
export function parseHex(text: string): [number, number, number] | undefined {
  const digits = text.trim().replace(/^#/, '');
  if (!/^([0-9a-f]{3}|[0-9a-f]{6})$/i.test(digits)) return undefined;
  const long = digits.length === 3 ? [...digits].map((digit) => digit + digit).join('') : digits;
  const part = (place: number): number => parseInt(long.slice(place, place + 2), 16) / 255;
  return [part(0), part(2), part(4)];
}

/** A component as a whole number from 0 to 255. */
export function byteOf(component: number | undefined): number {
  return Math.round(Math.min(1, Math.max(0, component ?? 0)) * 255);
}

/** The colour of a computed style such as "rgb(1, 2, 3)" or "rgba(1, 2, 3, 0.5)". */
export function parseComputed(text: string): Rgba {
  const [red = 0, green = 0, blue = 0, alpha = 1] = (text.match(/[\d.]+/g) ?? []).map(Number);
  return [red / 255, green / 255, blue / 255, alpha];
}

const hueNames = [
  [15, 'red'], [40, 'orange'], [65, 'yellow'], [95, 'lime'], [150, 'green'], [190, 'cyan'],
  [215, 'azure'], [250, 'blue'], [285, 'violet'], [325, 'magenta'], [345, 'pink'], [361, 'red'],
] as const;

/** A colour in words, such as "dark azure" or "light gray". */
export function colorName(rgb: readonly number[]): string {
  const { hue, saturation, lightness } = hslOf(rgb);
  if (lightness > 0.99) return 'white';
  if (lightness < 0.01) return 'black';
  const shade = lightness < 0.2 ? 'very dark ' : lightness < 0.4 ? 'dark ' : lightness > 0.8 ? 'very light ' : lightness > 0.6 ? 'light ' : '';
  const name = saturation < 0.08 ? 'gray' : (hueNames.find(([end]) => hue < end)?.[1] ?? 'red');
  return shade + name;
}
