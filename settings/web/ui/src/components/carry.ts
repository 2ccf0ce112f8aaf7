// A row that is being moved: its current place, the order to show meanwhile, and the result of the drop.
// The application decides; if it refuses the move, the row goes back to its place.

import type { Tree } from '../protocol/tree.js';
import type { Context } from './context.js';
import { moved, orderOf, rowName, sameSpot, spotOf, spotText, type Order, type Spot } from './reorder.js';

/** The table in which rows are moved. */
export interface CarryHost extends HTMLElement {
  readonly context: Context;
  readonly nodeId: string;
  requestUpdate(): void;
  readonly updateComplete: Promise<boolean>;
}

interface Carried {
  row: string;
  from: Spot;
  spot: Spot;
  by: 'finger' | 'keys';
}

export class Carrying {
  private _carried: Carried | undefined;
  /** A row whose picture is still moving to its place; the row itself is hidden until then. */
  landing: string | undefined;

  constructor(private readonly _host: CarryHost) {}

  get carried(): Readonly<Carried> | undefined {
    return this._carried;
  }

  /** The rows in the order to show. */
  get order(): Order {
    const order = this._treeOrder();
    return this._carried ? moved(order, this._carried.row, this._carried.spot) : order;
  }

  begin(row: string, by: Carried['by']): void {
    const from = spotOf(this._treeOrder(), row);
    if (!from) return;
    this._carried = { row, from, spot: from, by };
    const help = by === 'keys' ? '. Arrow keys move it, Space puts it down, Escape takes it back.' : '';
    this._say(`${this._name(row)} picked up, ${spotText(this._tree, this.order, from)}${help}`);
    this._host.requestUpdate();
  }

  /** Moves the row to a place. Returns true if the place changed. */
  to(spot: Spot): boolean {
    const carried = this._carried;
    if (!carried) return false;
    const place = spotOf(moved(this._treeOrder(), carried.row, spot), carried.row) ?? spot;
    if (sameSpot(carried.spot, place)) return false;
    carried.spot = place;
    this._say(spotText(this._tree, this.order, place));
    this._host.requestUpdate();
    return true;
  }

  /** Drops the row at its current place. Resolves when the application has answered. */
  async drop(): Promise<void> {
    const carried = this._carried;
    if (!carried) return;
    await this.place(carried.row, carried.spot);
    this._end(carried);
  }

  /** Returns the row to its original place. */
  cancel(): void {
    const carried = this._carried;
    if (!carried) return;
    this._say(`${this._name(carried.row)} is back at ${spotText(this._tree, this._treeOrder(), carried.from)}`);
    this._end(carried);
  }

  /** Returns true once if the carried row is no longer in the table. */
  lost(): boolean {
    const carried = this._carried;
    if (!carried || spotOf(this._treeOrder(), carried.row)) return false;
    this._carried = undefined;
    this._say('The row that was being moved is gone');
    return true;
  }

  /** Requests a move. The application announces the result. */
  async place(row: string, spot: Spot): Promise<void> {
    const order = this._treeOrder();
    const before = spotOf(order, row);
    if (before && sameSpot(before, spot)) return this._say(`${this._name(row)} stays at ${spotText(this._tree, order, before)}`);
    await this._host.context.act({ action: 'move', node: row, section: spot.section, index: spot.index });
  }

  private _end(carried: Carried): void {
    if (this._carried === carried) this._carried = undefined;
    if (carried.by === 'finger') this.landing = carried.row;
    this._host.requestUpdate();
  }

  private get _tree(): Tree {
    return this._host.context.tree;
  }

  private _treeOrder(): Order {
    return orderOf(this._tree, this._host.nodeId);
  }

  private _name(row: string): string {
    return rowName(this._tree, row);
  }

  private _say(text: string): void {
    this._host.context.say(text);
  }
}
