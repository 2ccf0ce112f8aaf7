// Decides which rows of a long section are in the document: the visible ones and some around them. Empty
// space replaces the others, so a table of any length costs as much as one screen.

import type { Order } from './reorder.js';

/** Rows from `first` up to, but not including, `last`. */
export interface Slice { first: number; last: number }

/** A piece of a section: a row, or space for rows that are not in the document. */
export type Piece = { key: string; row: string; index: number } | { key: string; height: number };

type HeightOf = (row: string) => number;

// Shorter sections are completely in the document.
const longSection = 100;
// The number of rows before the first measurement.
const atFirst = 48;
// How far the slice extends beyond the visible area, in multiples of its height.
const screensAround = 1;
// The slice moves in steps, so most frames of a scroll do not change it.
const stepRows = 8;

export function isLong(rows: readonly string[]): boolean {
  return rows.length > longSection;
}

/** The rows that overlap a range of the section, in points from its top, rounded to whole steps. */
export function sliceAt(rows: readonly string[], heightOf: HeightOf, top: number, bottom: number): Slice {
  let first = rows.length;
  let last = 0;
  let y = 0;
  for (const [index, row] of rows.entries()) {
    const end = y + heightOf(row);
    if (end > top && y < bottom) {
      first = Math.min(first, index);
      last = index + 1;
    }
    y = end;
  }
  if (last === 0) first = last = top > 0 ? rows.length : 0;
  return { first: Math.floor(first / stepRows) * stepRows, last: Math.min(rows.length, Math.ceil(last / stepRows) * stepRows) };
}

/** The pieces of a section: its slice, the rows that are always kept, and the space between them. */
export function piecesOf(rows: readonly string[], slice: Slice, kept: ReadonlySet<string>, heightOf: HeightOf): Piece[] {
  const pieces: Piece[] = [];
  let space = 0;
  const addSpace = (): void => {
    if (space > 0) pieces.push({ key: `space-${pieces.length}`, height: space });
    space = 0;
  };
  for (const [index, row] of rows.entries()) {
    if ((index < slice.first || index >= slice.last) && !kept.has(row)) {
      space += heightOf(row);
      continue;
    }
    addSpace();
    pieces.push({ key: row, row, index });
  }
  addSpace();
  return pieces;
}

/** The slices of a table's long sections, computed from the visible area. */
export class RowWindow {
  private readonly _slices = new Map<string, Slice>();

  sliceOf(section: string): Slice {
    return this._slices.get(section) ?? { first: 0, last: atFirst };
  }

  /** Fits the slices to the visible area. Returns true if other rows must be in the document now. */
  follow(scroller: HTMLElement, order: Order, heightOf: HeightOf): boolean {
    const around = scroller.clientHeight * screensAround;
    let changed = false;
    for (const { id, rows } of order) {
      const card = isLong(rows) ? scroller.querySelector<HTMLElement>(`[data-section="${id}"] > .rows`) : null;
      if (!card) continue;
      const top = scroller.scrollTop - card.offsetTop;
      const slice = sliceAt(rows, heightOf, top - around, top + scroller.clientHeight + around);
      const old = this.sliceOf(id);
      if (slice.first === old.first && slice.last === old.last) continue;
      this._slices.set(id, slice);
      changed = true;
    }
    return changed;
  }
}
