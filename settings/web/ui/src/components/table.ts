// A table: sections of rows in a scroller of its own. Rows are keyed by identity, so that one keeps
// its focus, its caret and the finger on it when others come and go; those that stay glide to their
// new place.

import { html, nothing, type PropertyValues, type TemplateResult } from 'lit';
import { repeat } from 'lit/directives/repeat.js';
import { childrenOf, nodeOf, type SectionNode, type TableNode } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import type { Context } from './context.js';
import { ghostOf } from './ghost.js';
import { LightElement } from './light-element.js';
import { animate, animateAway, motionAllowed, rowEasing } from './motion.js';
import { row } from './row.js';
import { lookOf, placedView } from './views.js';

const rowAnimationMs = 320;

/** Where a row stood in its card, and what it looked like where it is to leave. */
interface Place { top: number; height: number; card: HTMLElement; ghost?: HTMLElement }

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

  private _shownRows: string[] = [];
  private _places: Map<string, Place> | undefined;
  private _scrollFrame: number | undefined;
  private _unanswered = 0;
  private _knownOffset = 0;

  private get _node(): TableNode | undefined {
    return nodeOf(this.context.tree, this.nodeId, 'table');
  }

  private get _scroller(): HTMLElement | null {
    return this.querySelector<HTMLElement>('.table-scroll');
  }

  protected override render(): TemplateResult {
    const node = this._node;
    if (!node) return html``;
    const sections = childrenOf(this.context.tree, this.nodeId, 'section');
    return html`<div class="table-scroll table-${node.style ?? 'grouped'} ${node.editing ? 'editing' : ''}"
      ${styled({ ...lookOf(node), '--inset-top': `${this.insetTop}px` })} @scroll=${this._scrolled}>
      ${this.lead ?? nothing}
      ${this._edge('header')}
      ${repeat(sections, (id) => id, (id) => this._section(id))}
      ${this._edge('footer')}
    </div>`;
  }

  /** The view above the first section, or the one below the last. */
  private _edge(role: 'header' | 'footer'): TemplateResult | typeof nothing {
    const view = this._node?.children.find((child) => this.context.tree.nodes[child]?.role === role);
    if (view === undefined) return nothing;
    const height = this.context.tree.nodes[view]?.frame?.[3] ?? 0;
    return html`<div class="table-edge" ${styled({ height: `${height}px` })}>${placedView(this.context, view)}</div>`;
  }

  private _section(id: string): TemplateResult {
    const { context } = this;
    const node = nodeOf(context.tree, id, 'section');
    if (!node) return html``;
    const rows = childrenOf(context.tree, id, 'row');
    const use = rows.some((each) => hasCheckmark(context, each)) ? 'choice' : 'plain';
    const headed = node.header ? `section-${id}` : undefined;
    return html`<section class="section" data-section=${id} aria-labelledby=${headed ?? nothing}>
      ${heading(node, headed)}
      ${rows.length === 0 ? nothing : html`<div class="rows" role="list" aria-labelledby=${headed ?? nothing}>
        ${repeat(rows, (each) => each, (each) => row(context, each, use))}
      </div>`}
      ${node.footer ? html`<p class="section-footer">${node.footer}</p>` : nothing}
    </section>`;
  }

  // --- rows that come and go ---

  private _rowIds(): string[] {
    return childrenOf(this.context.tree, this.nodeId, 'section')
      .flatMap((section) => childrenOf(this.context.tree, section, 'row'));
  }

  protected override willUpdate(changed: PropertyValues): void {
    super.willUpdate(changed);
    this._places = undefined;
    if (!changed.has('context') || !this.hasUpdated) return;
    const rows = this._rowIds();
    const stay = new Set(rows);
    const kept = this._shownRows.filter((id) => stay.has(id)).length;
    const same = rows.length === this._shownRows.length && kept === rows.length;
    // Where nothing stays there is no movement to show: the table was loaded anew.
    if (!same && kept > 0 && motionAllowed()) this._places = this._measure(stay);
  }

  private _rowElements(): HTMLElement[] {
    return [...this.querySelectorAll<HTMLElement>('.row')].filter((element) => !element.closest('.ghost'));
  }

  private _measure(stay: Set<string>): Map<string, Place> {
    const places = new Map<string, Place>();
    for (const element of this._rowElements()) {
      const id = element.dataset['node'] ?? '';
      places.set(id, {
        top: element.offsetTop,
        height: element.offsetHeight,
        ghost: stay.has(id) ? undefined : ghostOf(element),
        card: element.parentElement as HTMLElement,
      });
    }
    return places;
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    this._shownRows = this._rowIds();
    if (this._places) this._glide(this._places);
    this._places = undefined;
    this._followOffset();
  }

  private _glide(places: Map<string, Place>): void {
    for (const element of this._rowElements()) this._glideTo(element, places.get(element.dataset['node'] ?? ''));
    for (const place of places.values()) {
      if (place.ghost && place.card.isConnected) leave(place.ghost, place);
    }
    glideCards(places);
  }

  // Within its card: the card itself grows and shrinks, and what stands below moves along.
  private _glideTo(element: HTMLElement, before: Place | undefined): void {
    if (!before) {
      animate(element, [{ opacity: 0, transform: 'translateY(-14px)' }, { opacity: 1, transform: 'none' }], rowAnimationMs, rowEasing);
      return;
    }
    const way = before.top - element.offsetTop;
    if (way !== 0) animate(element, [{ transform: `translateY(${way}px)` }, { transform: 'none' }], rowAnimationMs, rowEasing);
  }

  // --- scrolling ---

  private _scrolled(): void {
    this._scrollFrame ??= requestAnimationFrame(() => void this._tellOffset());
  }

  private async _tellOffset(): Promise<void> {
    this._scrollFrame = undefined;
    const scroller = this._scroller;
    if (!scroller || !this.isConnected) return;
    this._unanswered += 1;
    await this.context.act({ action: 'scroll', node: this.nodeId, offset: scroller.scrollTop - this._contentTop(scroller) });
    this._unanswered -= 1;
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
    const scroller = this._scroller;
    if (!scroller || offset === known || this._unanswered > 0 || this._scrollFrame !== undefined) return;
    scroller.scrollTop = offset + this._contentTop(scroller);
  }
}

function heading(node: SectionNode, id: string | undefined): TemplateResult | typeof nothing {
  if (!node.header) return nothing;
  return html`<h2 class="section-header" id=${id ?? nothing}>${node.header}</h2>`;
}

function hasCheckmark(context: Context, row: string): boolean {
  const cell = context.tree.nodes[row]?.children.find((child) => context.tree.nodes[child]?.kind === 'cell');
  return cell !== undefined && nodeOf(context.tree, cell, 'cell')?.accessory === 'checkmark';
}

function leave(ghost: HTMLElement, place: Place): void {
  ghost.style.setProperty('top', `${place.top}px`);
  ghost.style.setProperty('height', `${place.height}px`);
  place.card.append(ghost);
  animateAway(ghost, [{ opacity: 1, transform: 'none' }, { opacity: 0, transform: 'translateY(-14px)' }], rowAnimationMs * 0.7, rowEasing);
}

function glideCards(places: Map<string, Place>): void {
  const heights = new Map<HTMLElement, number>();
  for (const { card, height } of places.values()) heights.set(card, (heights.get(card) ?? 0) + height);
  for (const [card, height] of heights) {
    if (!card.isConnected || Math.abs(height - card.offsetHeight) < 1) continue;
    animate(card, [{ height: `${height}px` }, { height: `${card.offsetHeight}px` }], rowAnimationMs, rowEasing);
  }
}

customElements.define('zv-table', ZvTable);
