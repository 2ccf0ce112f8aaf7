// Animates changes of a table. Rows that stay glide to their new places; rows that appear or disappear
// fade. All movement is inside a card, and the card grows or shrinks with it.

import { ghostOf } from './ghost.js';
import { animate, animateAway, motionAllowed, rowEasing } from './motion.js';

const rowAnimationMs = 320;

/** A row's old place in its card, and a copy of its look if it will leave. */
interface Place { top: number; height: number; card: HTMLElement; ghost?: HTMLElement }

export class RowGlide {
  private _places: Map<string, Place> | undefined;
  /** The visible heights of these rows' cards. */
  private readonly _heights = new Map<HTMLElement, number>();

  constructor(private readonly _host: HTMLElement) {}

  /** Call it before the document changes. `stay` are the rows that will remain. */
  measure(stay: ReadonlySet<string>): void {
    if (!motionAllowed()) return;
    this._places = new Map();
    this._heights.clear();
    const moving = this._moving();
    for (const element of this._rowElements()) {
      const card = element.parentElement as HTMLElement;
      const id = element.dataset['node'] ?? '';
      this._heights.set(card, card.offsetHeight);
      const ghost = stay.has(id) ? undefined : ghostOf(element);
      this._places.set(id, { top: moving.has(element) ? visibleTop(element, card) : element.offsetTop, height: element.offsetHeight, card, ...(ghost && { ghost }) });
    }
  }

  /** Call it after the change. `came` selects the rows that are new, `away` those that are not visible. */
  play(came: (row: string) => boolean, away: (row: string) => boolean): void {
    const places = this._places;
    this._places = undefined;
    if (!places) return;
    for (const { element, id, top } of this._standing()) {
      if (!away(id)) glideTo(element, top, places.get(id), came(id));
    }
    for (const place of places.values()) {
      if (place.ghost && place.card.isConnected) leave(place.ghost, place);
    }
    glideCards(this._heights);
  }

  /** The elements that are being animated. One query for all, because each query recalculates styles. */
  private _moving(): Set<Element | null> {
    const effects = this._host.getAnimations({ subtree: true }).map((animation) => animation.effect);
    return new Set(effects.map((effect) => (effect instanceof KeyframeEffect ? effect.target : null)));
  }

  // Measures all rows before the first animation starts; alternating would force a layout per row.
  private _standing(): { element: HTMLElement; id: string; top: number }[] {
    return this._rowElements().map((element) => ({ element, id: element.dataset['node'] ?? '', top: element.offsetTop }));
  }

  private _rowElements(): HTMLElement[] {
    return [...this._host.querySelectorAll<HTMLElement>('.rows > .row:not(.ghost)')];
  }
}

/** The final height of a card in points, also while it grows or shrinks. */
export function restingHeight(card: HTMLElement): number {
  const last = card.getAnimations().at(-1)?.effect;
  const height = last instanceof KeyframeEffect ? last.getKeyframes().at(-1)?.['height'] : undefined;
  return typeof height === 'string' ? Number.parseFloat(height) : card.offsetHeight;
}

// The visible position of a row during an animation, in the points of its card.
function visibleTop(element: HTMLElement, card: HTMLElement): number {
  const box = card.getBoundingClientRect();
  const scale = card.offsetWidth > 0 ? box.width / card.offsetWidth : 1;
  return (element.getBoundingClientRect().top - box.top) / scale;
}

function glideTo(element: HTMLElement, top: number, before: Place | undefined, came: boolean): void {
  if (before?.card === element.parentElement) {
    const way = before.top - top;
    if (way !== 0) animate(element, [{ transform: `translateY(${way}px)` }, { transform: 'none' }], rowAnimationMs, rowEasing);
  } else if (before || came) {
    animate(element, [{ opacity: 0, transform: 'translateY(-14px)' }, { opacity: 1, transform: 'none' }], rowAnimationMs, rowEasing);
  }
}

function leave(ghost: HTMLElement, place: Place): void {
  ghost.style.setProperty('top', `${place.top}px`);
  ghost.style.setProperty('height', `${place.height}px`);
  place.card.append(ghost);
  animateAway(ghost, [{ opacity: 1, transform: 'none' }, { opacity: 0, transform: 'translateY(-14px)' }], rowAnimationMs * 0.7, rowEasing);
}

function glideCards(heights: ReadonlyMap<HTMLElement, number>): void {
  for (const [card, height] of heights) {
    if (!card.isConnected || card.querySelector('.row-space')) continue;
    // A card that is still animated continues from its current height.
    for (const animation of card.getAnimations()) animation.cancel();
    if (Math.abs(height - card.offsetHeight) < 1) continue;
    animate(card, [{ height: `${height}px` }, { height: `${card.offsetHeight}px` }], rowAnimationMs, rowEasing);
  }
}
