// Drags a row with a finger or the mouse. A picture of the row follows the pointer, the other rows make
// room, and the table scrolls while the pointer is near its edges. When the row is dropped, the picture
// moves to the row's new place, or to the old one if the move was refused.

import type { Carrying, CarryHost } from './carry.js';
import { ghostOf } from './ghost.js';
import { restingHeight } from './glide.js';
import { motionAllowed, rowEasing } from './motion.js';
import type { Order, Spot } from './reorder.js';

const slackPoints = 4;
const landingMs = 240;
const edgePoints = 64;
// Initial and maximum scroll speed at the edge, in points per second. It grows fourfold each second.
const slowScroll = 400;
const scrollGrowth = 4;
const fastScroll = 12_000;
const longestFrameMs = 250;
// A limit, because two places could lead to each other for ever.
const mostLooks = 8;

/** Positions in the table's own scale; the device may be shown smaller than its real size. */
interface Measures { top: number; height: number; scale: number }

/** The positions of a section's rows after all animations of cards, in points. */
interface SectionPlace { card: HTMLElement | undefined; top: number; bottom: number }

interface Finger {
  row: string;
  pointer: number;
  x: number;
  y: number;
  startX: number;
  startY: number;
}

interface Lifted {
  ghost: HTMLElement;
  /** The distance from the row's top to the finger, in points. */
  hold: number;
  height: number;
  left: number;
}

export interface DragHost extends CarryHost {
  readonly scroller: HTMLElement | null;
  /** The heights that are covered at the table's top and bottom, in points. */
  readonly insetTop: number;
  readonly layer: HTMLElement | null;
}

export class FingerDrag {
  private _finger: Finger | undefined;
  private _lifted: Lifted | undefined;
  private _frame: number | undefined;
  private _lastFrame = 0;
  private _scrollSpeed = 0;

  constructor(private readonly _host: DragHost, private readonly _carrying: Carrying) {}

  get active(): boolean {
    return this._lifted !== undefined;
  }

  /** Called when a pointer goes down on a row's handle. */
  down(event: PointerEvent, row: string): void {
    if (event.button !== 0 || !event.isPrimary || this._finger || this._carrying.carried) return;
    this._land();
    const { pointerId, clientX, clientY } = event;
    this._finger = { row, pointer: pointerId, x: clientX, y: clientY, startX: clientX, startY: clientY };
    addEventListener('pointermove', this._moved);
    addEventListener('pointerup', this._up);
    addEventListener('pointercancel', this._cancelled);
    addEventListener('keydown', this._key, true);
    addEventListener('blur', this._cancelled);
  }

  /** Called when the table or the dragged row goes away. */
  abandon(): void {
    this._release();
    this._lifted?.ghost.remove();
    this._lifted = undefined;
    this._carrying.landing = undefined;
  }

  private readonly _moved = (event: PointerEvent): void => {
    const finger = this._finger;
    if (!finger || event.pointerId !== finger.pointer) return;
    finger.x = event.clientX;
    finger.y = event.clientY;
    if (!this._lifted && Math.hypot(finger.x - finger.startX, finger.y - finger.startY) >= slackPoints) this._lift(finger);
  };

  private readonly _up = (event: PointerEvent): void => {
    if (event.pointerId !== this._finger?.pointer) return;
    this._moved(event);
    const { y } = this._finger;
    this._release();
    if (this._lifted) void this._drop(this._lifted, y);
  };

  // The rows move when they make room, and that may not be rendered yet.
  private async _drop(lifted: Lifted, y: number): Promise<void> {
    for (let look = 0; look < mostLooks && this._lifted === lifted && this._follow(y); look += 1) await this._host.updateComplete;
    if (this._lifted !== lifted) return;
    await this._carrying.drop();
    this._land();
  }

  private readonly _cancelled = (event: Event): void => {
    if (event instanceof PointerEvent && event.pointerId !== this._finger?.pointer) return;
    this._release();
    if (!this._lifted) return;
    this._carrying.cancel();
    this._land();
  };

  private readonly _key = (event: KeyboardEvent): void => {
    if (event.key !== 'Escape' || !this._lifted) return;
    event.preventDefault();
    event.stopPropagation();
    this._cancelled(event);
  };

  private _release(): void {
    if (this._frame !== undefined) cancelAnimationFrame(this._frame);
    this._frame = undefined;
    this._finger = undefined;
    removeEventListener('pointermove', this._moved);
    removeEventListener('pointerup', this._up);
    removeEventListener('pointercancel', this._cancelled);
    removeEventListener('keydown', this._key, true);
    removeEventListener('blur', this._cancelled);
  }

  private _lift(finger: Finger): void {
    const element = this._rowElement(finger.row);
    const { layer } = this._host;
    if (!element || !layer) return this._release();
    // Changes of the elements under the finger must not end the drag.
    this._host.setPointerCapture(finger.pointer);
    const { top, scale } = this._measures();
    const box = element.getBoundingClientRect();
    const ghost = ghostOf(element);
    ghost.dataset['row'] = finger.row;
    const left = (box.left - this._host.getBoundingClientRect().left) / scale;
    ghost.style.setProperty('left', `${left}px`);
    ghost.style.setProperty('width', `${element.offsetWidth}px`);
    ghost.style.setProperty('height', `${element.offsetHeight}px`);
    layer.append(ghost);
    this._lifted = { ghost, hold: (finger.startY - box.top) / scale, height: element.offsetHeight, left };
    this._put((box.top - top) / scale);
    this._carrying.begin(finger.row, 'finger');
    this._lastFrame = performance.now();
    this._frame = requestAnimationFrame(this._tick);
  }

  private readonly _tick = (now: number): void => {
    this._frame = requestAnimationFrame(this._tick);
    this._scrollNearEdge(Math.min(now - this._lastFrame, longestFrameMs) / 1000);
    this._lastFrame = now;
    if (this._finger) this._follow(this._finger.y);
  };

  /** Moves the picture to a height in the window. Returns true if the row's place in the table changed. */
  private _follow(clientY: number): boolean {
    const { _lifted: lifted } = this;
    const { scroller } = this._host;
    if (!lifted || !scroller) return false;
    const { top, scale } = this._measures();
    const y = (clientY - top) / scale - lifted.hold;
    this._put(y);
    const spot = this._spotAt(scroller, y + scroller.scrollTop, lifted.height);
    return spot !== undefined && this._carrying.to(spot);
  }

  private _put(y: number): void {
    this._lifted?.ghost.style.setProperty('transform', `translate3d(0, ${y}px, 0)`);
  }

  private _scrollNearEdge(seconds: number): void {
    const { _finger: finger } = this;
    const { scroller, insetTop } = this._host;
    if (!finger || !scroller) return;
    const { top, height, scale } = this._measures();
    const y = (finger.y - top) / scale;
    const up = insetTop + edgePoints - y;
    const down = y - (height - edgePoints);
    const depth = Math.max(up, down);
    if (depth <= 0) {
      this._scrollSpeed = 0;
      return;
    }
    this._scrollSpeed = Math.min(fastScroll, Math.max(slowScroll, this._scrollSpeed) * scrollGrowth ** seconds);
    const way = this._scrollSpeed * seconds * Math.min(1, 0.25 + depth / edgePoints);
    scroller.scrollTop += up > down ? -way : way;
  }

  // --- finding the target place ---

  private _spotAt(scroller: HTMLElement, top: number, height: number): Spot | undefined {
    const { carried, order } = this._carrying;
    if (!carried) return undefined;
    const places = placesOf(scroller, order);
    const section = sectionAt(places, top + height / 2);
    const { card, top: cardTop } = places[section] ?? { card: undefined, top: 0 };
    const others = order[section]?.rows.filter((id) => id !== carried.row) ?? [];
    const gap = carried.spot.section === section ? carried.spot.index : undefined;
    return { section, index: card ? indexIn(card, others, gap, top - cardTop, height) : 0 };
  }

  // --- landing ---

  private _land(): void {
    const { _lifted: lifted } = this;
    if (!lifted) return;
    this._lifted = undefined;
    void this._fly(lifted);
  }

  private async _fly({ ghost, left }: Lifted): Promise<void> {
    const row = ghost.dataset['row'];
    await this._host.updateComplete;
    const animation = motionAllowed() ? this._flight(ghost, left, row) : undefined;
    await animation?.finished.catch(() => undefined);
    ghost.remove();
    if (this._carrying.landing === row) this._carrying.landing = undefined;
    this._host.requestUpdate();
  }

  private _flight(ghost: HTMLElement, left: number, row: string | undefined): Animation {
    const element = row === undefined ? undefined : this._rowElement(row);
    const { top, scale } = this._measures();
    const from = ghost.style.getPropertyValue('transform');
    const options = { duration: landingMs, easing: rowEasing, fill: 'forwards' } as const;
    if (!element) return ghost.animate([{ opacity: 1 }, { opacity: 0 }], options);
    const card = element.closest<HTMLElement>('.rows');
    const boxTop = (card?.getBoundingClientRect().top ?? 0) + element.offsetTop * scale;
    const x = ((card?.getBoundingClientRect().left ?? 0) - this._host.getBoundingClientRect().left) / scale - left;
    ghost.classList.add('landing');
    return ghost.animate([{ transform: from }, { transform: `translate3d(${x}px, ${(boxTop - top) / scale}px, 0)` }], options);
  }

  private _rowElement(row: string): HTMLElement | undefined {
    return this._host.scroller?.querySelector<HTMLElement>(`.rows > .row[data-node="${row}"]:not(.ghost)`) ?? undefined;
  }

  private _measures(): Measures {
    const { scroller } = this._host;
    const box = (scroller ?? this._host).getBoundingClientRect();
    const height = (scroller ?? this._host).clientHeight;
    return { top: box.top, height, scale: height > 0 ? box.height / height : 1 };
  }
}

// A card that still grows or shrinks has not yet moved the cards below it to their final positions.
function placesOf(scroller: HTMLElement, order: Order): (SectionPlace | undefined)[] {
  let late = 0;
  return order.map(({ id }) => {
    const section = scroller.querySelector<HTMLElement>(`[data-section="${id}"]`);
    if (!section) return undefined;
    const card = section.querySelector<HTMLElement>(':scope > .rows') ?? undefined;
    if (!card) {
      const bottom = section.offsetTop + section.offsetHeight + late;
      return { card, top: bottom, bottom };
    }
    const height = restingHeight(card);
    const top = card.offsetTop + late;
    late += height - card.offsetHeight;
    return { card, top, bottom: top + height };
  });
}

// The border between two sections is halfway between their rows.
function sectionAt(places: readonly (SectionPlace | undefined)[], middle: number): number {
  let section = 0;
  let above = 0;
  for (const [index, place] of places.entries()) {
    if (!place) continue;
    if (index > 0 && middle > (above + place.top) / 2) section = index;
    above = place.bottom;
  }
  return section;
}

// Rows above the gap stay until the picture's top passes their middle, rows below until its bottom does.
// `top` is the picture's top in the points of the card.
function indexIn(card: HTMLElement, others: readonly string[], gap: number | undefined, top: number, height: number): number {
  const places = new Map(others.map((id, index) => [id, index]));
  let result: number | undefined;
  let first = others.length;
  for (const element of card.querySelectorAll<HTMLElement>(':scope > .row:not(.ghost)')) {
    const index = places.get(element.dataset['node'] ?? '');
    if (index === undefined) continue;
    first = Math.min(first, index);
    const middle = element.offsetTop + element.offsetHeight / 2;
    const edge = gap === undefined ? top + height / 2 : index < gap ? top : top + height;
    if (edge > middle) result = Math.max(result ?? 0, index + 1);
  }
  return result ?? first;
}
