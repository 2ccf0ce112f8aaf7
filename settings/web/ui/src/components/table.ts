// A table: sections of rows in a scroller of its own. Rows are keyed by identity, so that one keeps
// its focus, its caret and the finger on it when others come and go.

import { html, nothing, type PropertyValues, type TemplateResult } from 'lit';
import { repeat } from 'lit/directives/repeat.js';
import { nodeOf, type SectionNode, type TableNode } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import type { Context } from './context.js';
import { Editing } from './editing.js';
import { RowGlide } from './glide.js';
import { LightElement } from './light-element.js';
import { orderOf, type Order, type SectionRows } from './reorder.js';
import { row, type RowSetting } from './row.js';
import { anchorsOf, toPage, toTable, type Anchor, type Stretch } from './scroll-map.js';
import { lookOf, placedView } from './views.js';
import { isLong, piecesOf, RowWindow, type Piece } from './window.js';

const standardRowHeight = 44;
// How far beyond what is in sight rows are asked for, so that they are there when they come.
const aheadPoints = 88;

export class ZvTable extends LightElement {
  static override properties = {
    context: { attribute: false },
    nodeId: { attribute: false },
    insetTop: { attribute: false },
    lead: { attribute: false },
  };

  declare context: Context;
  declare nodeId: string;
  /** How much of the table's top lies under the bar, in points. */
  declare insetTop: number;
  /** What scrolls above the table's own content: the large title. */
  declare lead: TemplateResult | undefined;

  readonly editing = new Editing(this);
  private readonly _glide = new RowGlide(this);
  private readonly _window = new RowWindow();
  private _shown: Order = [];
  private _scrollFrame: number | undefined;
  private _telling = false;
  private _toldOffset: number | undefined;
  private _knownOffset = 0;

  private get _node(): TableNode | undefined {
    return nodeOf(this.context.tree, this.nodeId, 'table');
  }

  get scroller(): HTMLElement | null {
    return this.querySelector<HTMLElement>('.table-scroll');
  }

  /** What lies over the table. */
  get layer(): HTMLElement | null {
    return this.querySelector<HTMLElement>('.carry-layer');
  }

  protected override render(): TemplateResult {
    const node = this._node;
    if (!node) return html``;
    return html`<div class="table-scroll table-${node.style} ${node.editing ? 'editing' : ''}"
      ${styled({ ...lookOf(node), '--inset-top': `${this.insetTop}px` })} @scroll=${this._scrolled}>
      ${this.lead ?? nothing}
      ${this._edge('header')}
      ${repeat(this._order(), ({ id }) => id, (section) => this._section(section))}
      ${this._edge('footer')}
    </div>
    ${node.editing ? this.editing.layer() : nothing}`;
  }

  /** The rows as they are shown: those of the tree, but for one that is being moved. */
  private _order(): Order {
    return this._node?.editing ? this.editing.order : orderOf(this.context.tree, this.nodeId);
  }

  /** The view above the first section, or the one below the last. */
  private _edge(role: 'header' | 'footer'): TemplateResult | typeof nothing {
    const view = this._node?.children.find((child) => this.context.tree.nodes[child]?.role === role);
    if (view === undefined) return nothing;
    const [, top = 0, , height = 0] = this.context.tree.nodes[view]?.frame ?? [];
    return html`<div class="table-edge" ${styled({ height: `${height}px` })}><div class="table-edge-content" ${styled({ top: `${-top}px` })}>
      ${placedView(this.context, view)}
    </div></div>`;
  }

  private _section({ id, rows }: SectionRows): TemplateResult {
    const { context } = this;
    const node = nodeOf(context.tree, id, 'section');
    if (!node) return html``;
    const setting = this._setting(rows.some((each) => hasCheckmark(context, each)) ? 'choice' : 'plain');
    const headed = node.header ? `section-${id}` : undefined;
    return html`<section class="section" data-section=${id} aria-labelledby=${headed ?? nothing}>
      ${heading(node, headed)}
      ${rows.length === 0 ? nothing : html`<div class="rows" role="list" aria-labelledby=${headed ?? nothing}>
        ${isLong(rows) ? this._longRows(id, rows, setting) : repeat(rows, (each) => each, (each, index) => row(context, each, { ...setting, last: index === rows.length - 1 }))}
      </div>`}
      ${node.footer ? html`<p class="section-footer">${node.footer}</p>` : nothing}
    </section>`;
  }

  private _setting(use: RowSetting['use']): Omit<RowSetting, 'last'> {
    const node = this._node;
    return { use, editing: node?.editing ? this.editing : undefined, pressable: node?.pressable ?? false };
  }

  private _longRows(section: string, rows: readonly string[], setting: Omit<RowSetting, 'last'>): unknown {
    const pieces = piecesOf(rows, this._window.sliceOf(section), this._kept(), this._heightOf);
    return repeat(pieces, ({ key }) => key, (piece) => this._piece(piece, rows.length, setting));
  }

  private _piece(piece: Piece, count: number, setting: Omit<RowSetting, 'last'>): TemplateResult {
    if ('height' in piece) return html`<div class="row-space" aria-hidden="true" ${styled({ height: `${piece.height}px` })}></div>`;
    return row(this.context, piece.row, { ...setting, last: piece.index === count - 1, place: { index: piece.index, count } });
  }

  /** Rows that are in the document wherever they are. */
  private _kept(): Set<string> {
    const focused = document.activeElement?.closest<HTMLElement>('.row');
    const kept = new Set(this.editing.kept());
    if (focused?.dataset['node'] !== undefined && this.contains(focused)) kept.add(focused.dataset['node']);
    return kept;
  }

  private readonly _heightOf = (id: string): number => nodeOf(this.context.tree, id, 'row')?.height ?? standardRowHeight;

  // --- rows that come, go and move ---

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.editing.abandon();
  }

  protected override willUpdate(changed: PropertyValues): void {
    super.willUpdate(changed);
    if (!this.hasUpdated) return;
    this.editing.followTree();
    const order = this._order();
    if (sameOrder(order, this._shown)) return;
    const rows = new Set(order.flatMap((section) => section.rows));
    const stays = this._shown.some((section) => section.rows.some((id) => rows.has(id)));
    // Where nothing stays there is no movement to show: the table was loaded anew.
    if (stays) this._glide.measure(rows);
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    const before = new Set(this._shown.flatMap((section) => section.rows));
    this._shown = this._order();
    this._glide.play((id) => !before.has(id), (id) => this.editing.lookOf(id) === 'away');
    this._followOffset();
    this._followWindow();
    this.editing.drawn();
  }

  private _followWindow(): void {
    const { scroller } = this;
    if (scroller && this._window.follow(scroller, this._shown, this._heightOf)) this.requestUpdate();
  }

  // --- scrolling ---

  private _scrolled(): void {
    this._followWindow();
    this._scrollFrame ??= requestAnimationFrame(() => void this._tellOffset());
  }

  /** One message at a time; what was scrolled meanwhile is told with the next one. */
  private async _tellOffset(): Promise<void> {
    this._scrollFrame = undefined;
    const { scroller } = this;
    if (!scroller || !this.isConnected || this._telling) return;
    const { offset, overscan } = this._sight(scroller);
    if (offset === this._toldOffset) return;
    this._telling = true;
    this._toldOffset = offset;
    await this.context.act({ action: 'scroll', node: this.nodeId, offset, overscan });
    this._telling = false;
    void this._tellOffset();
  }

  /** What is in sight, as the application's table measures it. */
  private _sight(scroller: HTMLElement): { offset: number; overscan: number } {
    const top = scroller.scrollTop - this._contentTop(scroller);
    const anchors = this._anchors(scroller);
    const offset = toTable(anchors, top);
    const [, , , height = scroller.clientHeight] = this._node?.frame ?? [];
    const beyond = toTable(anchors, top + scroller.clientHeight) - (offset + height);
    return { offset, overscan: Math.ceil(Math.max(0, beyond)) + aheadPoints };
  }

  private _anchors(scroller: HTMLElement): Anchor[] {
    const top = this._contentTop(scroller);
    const stretches = this._shown.flatMap(({ id }) => this._stretches(scroller, id, top));
    const last = scroller.lastElementChild as HTMLElement | null;
    const end = last ? last.offsetTop + last.offsetHeight - top : 0;
    return anchorsOf(stretches, end, this._node?.contentHeight ?? end);
  }

  private _stretches(scroller: HTMLElement, section: string, top: number): Stretch[] {
    const card = scroller.querySelector<HTMLElement>(`[data-section="${section}"] > .rows`);
    const rowsTop = nodeOf(this.context.tree, section, 'section')?.rowsTop;
    if (!card || rowsTop === undefined) return [];
    let table = rowsTop;
    return [...card.querySelectorAll<HTMLElement>(':scope > :not(.ghost)')].map((element) => {
      const row = element.dataset['node'];
      const tableHeight = row === undefined ? element.offsetHeight : this._heightOf(row);
      const stretch = { page: card.offsetTop + element.offsetTop - top, pageHeight: element.offsetHeight, table, tableHeight };
      table += tableHeight;
      return stretch;
    });
  }

  /** How far down the table's own content begins: below the bar and the large title. */
  private _contentTop(scroller: HTMLElement): number {
    return this.insetTop + (scroller.querySelector<HTMLElement>('.large-title')?.offsetHeight ?? 0);
  }

  /** Another window or the device may scroll too; what comes back of this table's own scrolling is no news. */
  private _followOffset(): void {
    const offset = this._node?.offset ?? 0;
    const known = this._knownOffset;
    this._knownOffset = offset;
    const { scroller } = this;
    if (!scroller || offset === known || this._telling || this._scrollFrame !== undefined) return;
    const [, , , height = 0] = this._node?.frame ?? [];
    const isAtEnd = offset > 0 && offset + height >= (this._node?.contentHeight ?? Infinity) - 1;
    scroller.scrollTop = isAtEnd ? scroller.scrollHeight : toPage(this._anchors(scroller), offset) + this._contentTop(scroller);
  }
}

function sameOrder(a: Order, b: Order): boolean {
  const sameRows = (one: SectionRows, other: SectionRows | undefined): boolean =>
    one.id === other?.id && one.rows.length === other.rows.length && one.rows.every((id, index) => id === other.rows[index]);
  return a.length === b.length && a.every((section, index) => sameRows(section, b[index]));
}

function heading(node: SectionNode, id: string | undefined): TemplateResult | typeof nothing {
  if (!node.header) return nothing;
  return html`<h2 class="section-header" id=${id ?? nothing}>${node.header}</h2>`;
}

function hasCheckmark(context: Context, row: string): boolean {
  const cell = context.tree.nodes[row]?.children.find((child) => context.tree.nodes[child]?.kind === 'cell');
  return cell !== undefined && nodeOf(context.tree, cell, 'cell')?.accessory === 'checkmark';
}

customElements.define('zv-table', ZvTable);
