// The navigation: one bar and the page on top. Navigation controllers may be nested; what they show
// together is one bar, as on a device.

import { html, nothing, type PropertyValues, type TemplateResult } from 'lit';
import { keyed } from 'lit/directives/keyed.js';
import { firstBelow, nodeOf, type Bar, type NavigationNode, type PageNode, type Tree } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import type { Context } from './context.js';
import { copyScroll, ghostOf } from './ghost.js';
import { chevronLeft, warning } from './icons.js';
import { LightElement } from './light-element.js';
import { animate, animateAway, pushEasing } from './motion.js';
import { placedChildren } from './views.js';
import './table.js';

const barHeight = 44;
const defaultTransitionMs = 400;

/** What the nested navigation controllers show together. */
interface Shown {
  page: string | undefined;
  title: string;
  titleOpacity: number;
  largeTitle: boolean;
  /** The navigation controller that goes back, and the title of the page below. */
  back: { node: string; title: string } | undefined;
  hidden: boolean;
}

export class ZvNavigation extends LightElement {
  static override properties = {
    context: { attribute: false },
    nodeId: { attribute: false },
    safeTop: { attribute: false },
    _collapsed: { state: true },
  };

  declare context: Context;
  declare nodeId: string;
  /** The height of the status bar. */
  declare safeTop: number;
  // The large title has gone under the bar.
  declare private _collapsed: boolean;

  private _page: string | undefined;
  private _history: string[] = [];
  private _leaving: HTMLElement | undefined;
  private readonly _room = new ResizeObserver(() => this._fitBack());
  private _lead: Element | null = null;
  private _backTitle: string | undefined;

  /** Ends when the page's table is drawn, too. */
  protected override async getUpdateComplete(): Promise<boolean> {
    const complete = await super.getUpdateComplete();
    await this.querySelector<LightElement>('.page:not(.ghost) zv-table')?.updateComplete;
    return complete;
  }

  protected override render(): TemplateResult {
    const shown = shownBy(this.context.tree, this.nodeId);
    const page = shown.page === undefined ? undefined : nodeOf(this.context.tree, shown.page, 'page');
    return html`<div class="navigation" ${styled({ '--bar-top': `${this.safeTop}px` })}>
      <div class="page-layers">
        ${keyed(shown.page, html`<main class="page" data-node=${shown.page ?? ''} @scroll=${{ handleEvent: this._scrolled, capture: true }}>
          ${page && shown.page !== undefined ? this._pageContent(shown.page, page, shown) : nothing}
        </main>`)}
      </div>
      ${shown.hidden ? nothing : this._bar(shown)}
    </div>`;
  }

  private _pageContent(id: string, page: PageNode, shown: Shown): TemplateResult {
    if (page.problem) return problem(page.problem);
    const table = firstBelow(this.context.tree, id, 'table');
    if (table === undefined) return html`<div class="page-views">${placedChildren(this.context, id)}</div>`;
    const lead = shown.largeTitle ? html`<h1 class="large-title">${shown.title}</h1>` : undefined;
    return html`<zv-table .context=${this.context} .nodeId=${table} .insetTop=${this._inset(shown)} .lead=${lead}></zv-table>`;
  }

  private _inset(shown: Shown): number {
    return this.safeTop + (shown.hidden ? 0 : barHeight);
  }

  private _bar(shown: Shown): TemplateResult {
    const { back } = shown;
    const isLarge = shown.largeTitle && !this._collapsed;
    const opacity = isLarge ? 0 : shown.titleOpacity;
    return html`<header class="bar ${isLarge ? 'large' : ''}">
      <div class="bar-lead">${back
        ? html`<button class="back" type="button" aria-label="Back to ${back.title || 'the page before'}"
            @click=${() => void this.context.act({ action: 'back', node: back.node })}>${chevronLeft()}<span class="back-title">${back.title || 'Back'}</span><span class="back-short">Back</span></button>`
        : nothing}</div>
      ${shown.largeTitle
        ? html`<span class="bar-title" aria-hidden="true" ${styled({ opacity })}>${shown.title}</span>`
        : html`<h1 class="bar-title" ${styled({ opacity })}>${shown.title}</h1>`}
      <span></span>
    </header>`;
  }

  // --- what scrolls under the bar ---

  private readonly _scrolled = (event: Event): void => {
    const scroller = event.target as HTMLElement;
    if (scroller.classList.contains('table-scroll')) this._readScroll(scroller);
  };

  private _readScroll(scroller: HTMLElement | null): void {
    const top = scroller?.scrollTop ?? 0;
    this.classList.toggle('scrolled', top > (this._large ? this._largeTitleHeight() : 1));
    this._collapsed = this._large && top > this._largeTitleHeight() - 8;
  }

  private get _large(): boolean {
    return this.querySelector('.page-layers > .page .large-title') !== null;
  }

  private _largeTitleHeight(): number {
    return this.querySelector<HTMLElement>('.page-layers > .page .large-title')?.offsetHeight ?? 0;
  }

  // --- from page to page ---

  protected override willUpdate(changed: PropertyValues): void {
    super.willUpdate(changed);
    if (!this.hasUpdated || !changed.has('context')) return;
    const next = shownBy(this.context.tree, this.nodeId).page;
    const dissolves = this.context.transition?.kind === 'crossDissolve';
    if (next === this._page && !dissolves) return;
    const old = this.querySelector<HTMLElement>('.page-layers > .page:not(.ghost)');
    this._leaving = old ? ghostOf(old) : undefined;
    if (this._leaving && old) this.querySelector('.page-layers')?.append(this._leaving);
    if (this._leaving && old) copyScroll(old, this._leaving);
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    const { page, back } = shownBy(this.context.tree, this.nodeId);
    this._watchBack(back?.title);
    const left = this._leaving;
    this._leaving = undefined;
    if (page !== this._page) this._arrived(page);
    if (left) this._playTransition(left, page);
    this._page = page;
  }

  // The title of the page below gives way to a short word where it has no room beside the title. That
  // is measured when the room has changed, and not with every change of the tree.
  private _watchBack(title: string | undefined): void {
    const lead = this.querySelector('.bar-lead');
    if (lead === this._lead && title === this._backTitle) return;
    this._lead = lead;
    this._backTitle = title;
    this._room.disconnect();
    if (lead) this._room.observe(lead);
  }

  private _fitBack(): void {
    const back = this._lead?.querySelector('.back');
    back?.classList.remove('short');
    const title = back?.querySelector('.back-title');
    if (title && title.scrollWidth > title.clientWidth) back?.classList.add('short');
  }

  private _arrived(page: string | undefined): void {
    this._readScroll(this.querySelector('.page-layers > .page:not(.ghost) .table-scroll'));
    const hadFocus = this._page !== undefined && (document.activeElement === document.body || document.activeElement === null);
    if (hadFocus && page !== undefined) this.querySelector<HTMLElement>('.back, .page-layers > .page:not(.ghost) button')?.focus({ preventScroll: true });
  }

  private _playTransition(leaving: HTMLElement, page: string | undefined): void {
    const { transition } = this.context;
    const milliseconds = transition ? transition.duration * 1000 : defaultTransitionMs;
    const arriving = this.querySelector<HTMLElement>('.page-layers > .page:not(.ghost)');
    if (page === this._page || !arriving) {
      return animateAway(leaving, [{ opacity: 1 }, { opacity: 0 }], milliseconds, 'ease');
    }
    const isPop = this._goesBack(page);
    const away = { transform: 'translateX(100%)' };
    const aside = { transform: 'translateX(-28%)', filter: 'brightness(0.92)' };
    const still = { transform: 'none', filter: 'none' };
    leaving.classList.add(isPop ? 'above' : 'below');
    animateAway(leaving, isPop ? [still, away] : [still, aside], milliseconds, pushEasing);
    for (const part of this.querySelectorAll('.bar > *')) animate(part, [{ opacity: 0 }, {}], milliseconds * 0.7, 'ease');
    animate(arriving, isPop ? [aside, still] : [away, still], milliseconds, pushEasing);
  }

  private _goesBack(page: string | undefined): boolean {
    const seen = page === undefined ? -1 : this._history.indexOf(page);
    if (this._page !== undefined && seen < 0) this._history.push(this._page);
    if (seen >= 0) this._history.length = seen;
    return seen >= 0 || this.context.transition?.kind === 'pop';
  }
}

function shownBy(tree: Tree, id: string): Shown {
  const shown: Shown = { page: undefined, title: '', titleOpacity: 1, largeTitle: false, back: undefined, hidden: true };
  let current: string | undefined = id;
  for (let outermost = true; current !== undefined; outermost = false) {
    const node: NavigationNode | undefined = nodeOf(tree, current, 'navigation');
    if (!node) break;
    addBar(shown, current, node.bar, outermost);
    current = node.children.find((child) => ['navigation', 'page'].includes(tree.nodes[child]?.kind ?? ''));
  }
  shown.page = current;
  return shown;
}

// The title is the innermost one that there is; its opacity is that of the outermost bar, behind
// which the inner one is not seen.
function addBar(shown: Shown, id: string, bar: Bar, outermost: boolean): void {
  if (!bar.hidden) shown.hidden = false;
  if (bar.title) shown.title = bar.title;
  if (bar.back !== undefined) shown.back = { node: id, title: bar.back };
  if (bar.largeTitle) shown.largeTitle = true;
  if (outermost) shown.titleOpacity = bar.titleOpacity ?? 1;
}

function problem(text: { title: string; text: string }): TemplateResult {
  return html`<div class="page-problem" role="alert">${warning()}<h1>${text.title}</h1><p>${text.text}</p></div>`;
}

customElements.define('zv-navigation', ZvNavigation);
