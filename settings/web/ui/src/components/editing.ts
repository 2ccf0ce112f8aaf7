// The controls of an editing table: insert and delete controls, and the handles that move rows with a
// finger, with keys, or through a menu that a click opens.

import { html, nothing, type TemplateResult } from 'lit';
import { Carrying } from './carry.js';
import { FingerDrag, type DragHost } from './drag.js';
import { moveMenu, type MoveMenu } from './move-menu.js';
import { edgeOf, orderOf, spotOf, stepFrom, type Order, type Spot } from './reorder.js';

const pageRows = 10;

export class Editing {
  private readonly _carrying: Carrying;
  private readonly _drag: FingerDrag;
  private _menu: MoveMenu | undefined;
  private _menuIsNew = false;
  /** The element that gets the focus as soon as it is in the document. */
  private _focus: { row: string; selector: string } | undefined;

  constructor(private readonly _host: DragHost) {
    this._carrying = new Carrying(_host);
    this._drag = new FingerDrag(_host, this._carrying);
  }

  /** The rows in the order to show. */
  get order(): Order {
    return this._carrying.order;
  }

  /** Rows that must be in the document. */
  kept(): string[] {
    return [this._carrying.carried?.row, this._focus?.row, this._menu?.row].filter((row) => row !== undefined);
  }

  /** The look of a row while it is being moved. */
  lookOf(row: string): string {
    const { carried, landing } = this._carrying;
    if (landing === row || (carried?.row === row && carried.by === 'finger')) return 'away';
    return carried?.row === row ? 'lifted' : '';
  }

  hasMenu(row: string): boolean {
    return this._menu?.row === row;
  }

  /** The content above the table: the picture of a dragged row, and the menu. */
  layer(): TemplateResult {
    const events = { choose: this._choose, close: this._closeMenu };
    return html`<div class="carry-layer"></div>
      <span id=${this.helpId} hidden>Space picks the row up for the arrow keys; Enter opens a menu of moves.</span>
      ${this._menu ? moveMenu(this._host.context.tree, this._treeOrder(), this._menu, events) : nothing}`;
  }

  get helpId(): string {
    return `move-help-${this._host.nodeId}`;
  }

  // --- user actions ---

  readonly grab = (event: PointerEvent, row: string): void => this._drag.down(event, row);

  async commit(row: string): Promise<void> {
    const spot = spotOf(this._treeOrder(), row);
    const hadFocus = document.activeElement?.closest<HTMLElement>('.row')?.dataset['node'] === row;
    await this._host.context.act({ action: 'commit', node: row });
    if (hadFocus && spot && !this._host.contains(document.activeElement)) this._focusNear(spot, row);
  }

  /** Moves the focus from the committed row to the row that takes its place. */
  private _focusNear(spot: Spot, committed: string): void {
    const rows = this._treeOrder()[spot.section]?.rows ?? [];
    this._takeFocus(rows[Math.min(spot.index, rows.length - 1)] ?? committed, '.editing-control');
  }

  readonly key = (event: KeyboardEvent, row: string): void => {
    const { carried } = this._carrying;
    if (carried?.row === row && carried.by === 'keys') this._carriedKey(event, carried.spot);
    else if (event.key === ' ' && !carried) this._pickUp(event, row);
  };

  private _pickUp(event: KeyboardEvent, row: string): void {
    event.preventDefault();
    if (event.repeat) return;
    this._carrying.begin(row, 'keys');
    document.addEventListener('focusin', this._elsewhere);
    document.addEventListener('pointerdown', this._elsewhere);
  }

  private _carriedKey(event: KeyboardEvent, spot: Spot): void {
    if (event.key === 'Tab') return;
    event.preventDefault();
    event.stopPropagation();
    const goal = this._goalOf(event.key, spot);
    if (goal) this._carrying.to(goal);
    else if ((event.key === ' ' || event.key === 'Enter') && !event.repeat) void this._putDown();
    else if (event.key === 'Escape') this._putBack();
  }

  private _goalOf(key: string, spot: Spot): Spot | undefined {
    const { order } = this;
    switch (key) {
      case 'ArrowUp': return stepFrom(order, spot, -1);
      case 'ArrowDown': return stepFrom(order, spot, 1);
      case 'Home': return edgeOf(order, spot, -1);
      case 'End': return edgeOf(order, spot, 1);
      case 'PageUp': return { section: spot.section, index: Math.max(0, spot.index - pageRows) };
      case 'PageDown': return { section: spot.section, index: Math.min(edgeOf(order, spot, 1).index, spot.index + pageRows) };
      default: return undefined;
    }
  }

  private async _putDown(): Promise<void> {
    const row = this._carrying.carried?.row;
    this._stopWatching();
    await this._carrying.drop();
    if (row !== undefined) this._takeFocus(row, '.reorder');
  }

  private _putBack(): void {
    const row = this._carrying.carried?.row;
    this._stopWatching();
    this._carrying.cancel();
    if (row !== undefined) this._takeFocus(row, '.reorder');
  }

  // If the user turns to something else, the move ends and the row goes back.
  private readonly _elsewhere = (event: Event): void => {
    const row = this._carrying.carried?.row;
    const target = event.target instanceof Element ? event.target.closest<HTMLElement>('.row') : null;
    if (event.type === 'focusin' && target?.dataset['node'] === row) return;
    this._stopWatching();
    this._carrying.cancel();
  };

  private _stopWatching(): void {
    document.removeEventListener('focusin', this._elsewhere);
    document.removeEventListener('pointerdown', this._elsewhere);
  }

  // --- the menu ---

  readonly openMenu = (event: MouseEvent, row: string): void => {
    if (this._drag.active || this._carrying.carried) return;
    const handle = (event.currentTarget as HTMLElement).getBoundingClientRect();
    const host = this._host.getBoundingClientRect();
    const scale = host.height / (this._host.clientHeight || host.height);
    const opensUp = handle.top - host.top > host.height / 2;
    this._menu = {
      row,
      right: (host.right - handle.right) / scale + 10,
      ...(opensUp ? { bottom: (host.bottom - handle.top) / scale } : { top: (handle.bottom - host.top) / scale }),
    };
    this._menuIsNew = true;
    this._host.requestUpdate();
  };

  private readonly _closeMenu = (): void => {
    const row = this._menu?.row;
    this._menu = undefined;
    if (row !== undefined) this._takeFocus(row, '.reorder');
  };

  private readonly _choose = async (row: string, spot: Spot): Promise<void> => {
    this._menu = undefined;
    this._host.requestUpdate();
    await this._carrying.place(row, spot);
    this._takeFocus(row, '.reorder');
  };

  // --- with each rendering of the table ---

  /** Before rendering: cancels what the user was doing if its row is gone. */
  followTree(): void {
    if (this._carrying.lost()) {
      this._stopWatching();
      this._drag.abandon();
    }
    if (this._menu && !spotOf(this._treeOrder(), this._menu.row)) this._menu = undefined;
  }

  /** After rendering: sets the focus. */
  drawn(): void {
    const { carried } = this._carrying;
    if (carried?.by === 'keys') this._keepInHand(carried.row);
    if (this._focus) this._control(this._focus.row, this._focus.selector)?.focus();
    this._focus = undefined;
    if (this._menuIsNew) this._host.querySelector<HTMLElement>('.move-menu [role="menuitem"]:not(:disabled)')?.focus({ preventScroll: true });
    this._menuIsNew = false;
  }

  private _keepInHand(row: string): void {
    const handle = this._control(row, '.reorder');
    if (!handle) return;
    if (document.activeElement !== handle) handle.focus({ preventScroll: true });
    handle.closest('.row')?.scrollIntoView({ block: 'nearest' });
  }

  private _takeFocus(row: string, selector: string): void {
    this._focus = { row, selector };
    this._host.requestUpdate();
  }

  private _control(row: string, selector: string): HTMLElement | null {
    return this._host.querySelector<HTMLElement>(`.rows > .row[data-node="${row}"]:not(.ghost) ${selector}`);
  }

  /** The table leaves the document. */
  abandon(): void {
    this._stopWatching();
    this._drag.abandon();
  }

  private _treeOrder(): Order {
    return orderOf(this._host.context.tree, this._host.nodeId);
  }
}
