// A press on a row with a finger, the mouse or a key, in a table that handles long presses. The
// application is told when the press begins and ends. It decides by its own clock whether the press was
// long, and treats a short press as a tap.

import type { Context } from './context.js';

const slackPoints = 10;

interface Held {
  row: string;
  act: Context['act'];
  element: HTMLElement;
  /** The pointer that is down, or undefined for a key. */
  pointer: number | undefined;
  x: number;
  y: number;
}

let held: Held | undefined;
// True while the next click belongs to a press that has already been sent.
let clickIsTold = false;

export function pressBegins(context: Context, row: string, event: PointerEvent): void {
  if (event.button !== 0 || !event.isPrimary) return;
  clickIsTold = false;
  hold(context, row, event.currentTarget as HTMLElement, event.pointerId, event.clientX, event.clientY);
  addEventListener('pointermove', moved);
  addEventListener('pointerup', released);
}

/** Enter and Space act like a finger that is held down. */
export function pressKey(context: Context, row: string, event: KeyboardEvent): void {
  if (event.key !== 'Enter' && event.key !== ' ') return;
  event.preventDefault();
  if (event.repeat || held) return;
  const element = event.currentTarget as HTMLElement;
  hold(context, row, element, undefined, 0, 0);
  element.addEventListener('keyup', keyReleased);
  element.addEventListener('blur', cancelled);
}

/** Handles a click. A click by assistive technology is a tap; any other was already sent as a press. */
export function pressClick(context: Context, row: string): void {
  if (!clickIsTold) void context.act({ action: 'tap', node: row });
}

function hold(context: Context, row: string, element: HTMLElement, pointer: number | undefined, x: number, y: number): void {
  cancel();
  held = { row, act: context.act, element, pointer, x, y };
  element.dataset['held'] = '';
  addEventListener('pointercancel', cancelled);
  addEventListener('blur', cancelled);
  element.closest('.table-scroll')?.addEventListener('scroll', cancelled);
  void held.act({ action: 'press', node: row, phase: 'begin' });
}

function moved(event: PointerEvent): void {
  if (!held || event.pointerId !== held.pointer) return;
  if (Math.hypot(event.clientX - held.x, event.clientY - held.y) > slackPoints) cancel();
}

function released(event: PointerEvent): void {
  if (!held || event.pointerId !== held.pointer) return;
  passOverClick();
  end('end');
}

function keyReleased(event: KeyboardEvent): void {
  if (event.key !== 'Enter' && event.key !== ' ') return;
  event.preventDefault();
  end('end');
}

function cancelled(event: Event): void {
  if (event instanceof PointerEvent && event.pointerId !== held?.pointer) return;
  cancel();
}

// A cancelled press, such as a scroll, must not become a tap either.
function cancel(): void {
  if (!held) return;
  if (held.pointer !== undefined) {
    clickIsTold = true;
    addEventListener('pointerup', passOverClick, { once: true });
  }
  end('cancel');
}

// If the browser sends a click, it comes right after the pointer goes up.
function passOverClick(): void {
  clickIsTold = true;
  setTimeout(() => { clickIsTold = false; });
}

function end(phase: 'end' | 'cancel'): void {
  if (!held) return;
  const { row, act, element } = held;
  held = undefined;
  delete element.dataset['held'];
  removeEventListener('pointermove', moved);
  removeEventListener('pointerup', released);
  removeEventListener('pointercancel', cancelled);
  removeEventListener('blur', cancelled);
  element.removeEventListener('keyup', keyReleased);
  element.removeEventListener('blur', cancelled);
  element.closest('.table-scroll')?.removeEventListener('scroll', cancelled);
  void act({ action: 'press', node: row, phase });
}
