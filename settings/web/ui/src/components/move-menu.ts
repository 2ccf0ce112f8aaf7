// The menu that a click on a row's handle opens. Each item is one move.

import { html, type TemplateResult } from 'lit';
import { styled } from '../directives/styled.js';
import type { Tree } from '../protocol/tree.js';
import { edgeOf, rowName, sameSpot, sectionName, spotOf, stepFrom, type Order, type Spot } from './reorder.js';

export interface MoveMenu {
  row: string;
  /** The menu's position, in points from the table's edges. */
  right: number;
  top?: number;
  bottom?: number;
}

interface Choice { text: string; spot: Spot | undefined }

export interface MoveMenuEvents {
  choose(row: string, spot: Spot): void;
  close(): void;
}

export function moveMenu(tree: Tree, order: Order, menu: MoveMenu, events: MoveMenuEvents): TemplateResult {
  const name = rowName(tree, menu.row);
  const place = { right: points(menu.right), top: points(menu.top), bottom: points(menu.bottom) };
  return html`<div class="move-menu-ground" @pointerdown=${events.close}></div>
    <div class="move-menu" role="menu" aria-label="Move ${name}" ${styled(place)} @keydown=${(event: KeyboardEvent) => key(event, events)}>
      ${choicesOf(tree, order, menu.row).map(({ text, spot }) => html`<button type="button" role="menuitem" tabindex="-1"
        ?disabled=${spot === undefined} @click=${() => spot && events.choose(menu.row, spot)}>${text}</button>`)}
    </div>`;
}

function choicesOf(tree: Tree, order: Order, row: string): Choice[] {
  const from = spotOf(order, row);
  if (!from) return [];
  const other = (spot: Spot | undefined): Spot | undefined => (sameSpot(spot, from) ? undefined : spot);
  const sections = order.map((_, section) => section).filter((section) => section !== from.section);
  return [
    { text: 'Move up', spot: stepFrom(order, from, -1) },
    { text: 'Move down', spot: stepFrom(order, from, 1) },
    { text: 'Move to the top', spot: other(edgeOf(order, from, -1)) },
    { text: 'Move to the bottom', spot: other(edgeOf(order, from, 1)) },
    ...sections.map((section) => ({
      text: `Move to ${sectionName(tree, order, section)}`,
      spot: { section, index: order[section]?.rows.length ?? 0 },
    })),
  ];
}

function points(length: number | undefined): string | undefined {
  return length === undefined ? undefined : `${length}px`;
}

function key(event: KeyboardEvent, events: MoveMenuEvents): void {
  const menu = event.currentTarget as HTMLElement;
  const items = [...menu.querySelectorAll<HTMLElement>('[role="menuitem"]:not(:disabled)')];
  const now = items.indexOf(document.activeElement as HTMLElement);
  const next: Record<string, number> = { ArrowDown: now + 1, ArrowUp: now - 1, Home: 0, End: items.length - 1 };
  const goal = next[event.key];
  if (goal !== undefined) items[(goal + items.length) % items.length]?.focus();
  else if (event.key === 'Escape' || event.key === 'Tab') events.close();
  else return;
  event.preventDefault();
  event.stopPropagation();
}
