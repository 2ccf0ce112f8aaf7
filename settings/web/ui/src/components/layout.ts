// How the phone and the panes share the window.

import type { Shape } from './screen.js';

export type Arrangement =
  /** The phone at the left, every pane beside it. */
  | { kind: 'grid'; scale: number }
  /** The phone at the left, one pane at a time beside it. */
  | { kind: 'tabs'; scale: number }
  /** The screen fills the window; the panes are behind a bar of tabs. */
  | { kind: 'bare'; scale: number };

const margin = 20;
const paneMinimum = 300;
const gridMinimum = 620;
const smallestScale = 0.5;

export function arrange(shape: Shape, windowWidth: number, windowHeight: number): Arrangement {
  const height = shape.height + 2 * shape.bezel;
  const width = shape.width + 2 * shape.bezel;
  const tallest = (windowHeight - 2 * margin) / height;
  const widest = (windowWidth - paneMinimum - 3 * margin) / width;
  const scale = Math.min(1, tallest, widest);
  if (scale < smallestScale) return { kind: 'bare', scale: 1 };
  const beside = windowWidth - width * scale - 3 * margin;
  return { kind: beside >= gridMinimum ? 'grid' : 'tabs', scale: Math.floor(scale * 200) / 200 };
}
