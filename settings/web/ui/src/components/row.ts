// A row of a table. It is a list item; where a tap on it does something its cell is a button, where
// it holds a control the control is what one reaches.

import { html, nothing, type TemplateResult } from 'lit';
import { nodeOf, type CellNode, type RowNode } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import { cellContent, cellLook, controlsOf, pictureWidth } from './cell.js';
import type { Context } from './context.js';
import type { Editing } from './editing.js';
import { grip, info, minus, plus, warning } from './icons.js';
import { pressBegins, pressClick, pressKey } from './press.js';
import { rowName } from './reorder.js';

const pictureGap = 15;

/** What a row has of its table. */
export interface RowSetting {
  /** How the rows of the section are used: a choice has a checkmark on one of them. */
  use: 'plain' | 'choice';
  /** In a table that is being edited. */
  editing: Editing | undefined;
  /** The table watches for long presses on its rows. */
  pressable: boolean;
  /** It is the last one of its section. */
  last: boolean;
  /** The row's place, where not all rows of its section are in the document. */
  place?: { index: number; count: number };
}

export function row(context: Context, id: string, setting: RowSetting): TemplateResult {
  const { editing, place } = setting;
  const node = nodeOf(context.tree, id, 'row');
  if (!node) return html``;
  const cellId = node.children.find((child) => context.tree.nodes[child]?.kind === 'cell');
  const cell = cellId === undefined ? undefined : nodeOf(context.tree, cellId, 'cell');
  const picture = cell && cellId !== undefined ? pictureWidth(context, cellId, cell) : 0;
  return html`<div
    class="row ${setting.last ? 'last' : ''} ${node.problem ? 'broken' : ''} ${context.inspected === id ? 'inspected' : ''} ${editing ? `editable ${editing.lookOf(id)}` : ''}"
    role="listitem"
    aria-posinset=${place ? place.index + 1 : nothing}
    aria-setsize=${place ? place.count : nothing}
    data-node=${id}
    data-identifier=${node.identifier ?? nothing}
    ${styled({ '--row-height': `${node.height}px`, '--picture-room': picture > 0 ? `${picture + pictureGap}px` : undefined })}
  >${rowContent(context, id, node, cellId, cell, setting)}</div>`;
}

function rowContent(
  context: Context, id: string, node: RowNode, cellId: string | undefined, cell: CellNode | undefined, setting: RowSetting,
): TemplateResult {
  if (node.problem) return brokenRow(node.title, node.problem);
  return cell && cellId !== undefined ? shownRow(context, id, node, cellId, cell, setting) : hiddenRow(node);
}

// Out of sight a row has no cell, but it keeps its height and its name.
function hiddenRow(node: RowNode): TemplateResult {
  return html`<span class="visually-hidden">${node.title}</span>`;
}

/** A row that could not be made, or whose cell could not: it says why in place of what it would show. */
function brokenRow(title: string | undefined, problem: string): TemplateResult {
  return html`<div class="cell problem" role="group" aria-label=${title || nothing}>
    ${warning()}<p>${title ? html`<strong>${title}</strong>` : nothing}${problem}</p>
  </div>`;
}

function shownRow(
  context: Context, id: string, node: RowNode, cellId: string, cell: CellNode, setting: RowSetting,
): TemplateResult {
  const { editing } = setting;
  const controls = controlsOf(context, cellId, node);
  const enabled = cell.enabled !== false && cell.interactive !== false;
  const content = html`${cellContent(context, cellId, cell, node, enabled)}`;
  return html`${editing ? editingControl(context, id, node, editing) : nothing}
    ${node.selectable && controls.length === 0
      ? tappable(context, id, cell, enabled, setting, content)
      : plainCell(context, id, node, cell, enabled, controls.length > 0, content)}
    ${cell.accessory === 'detail' ? detailButton(context, id, node) : nothing}
    ${editing && node.editing?.movable ? handle(context, id, editing) : nothing}`;
}

function tappable(context: Context, id: string, cell: CellNode, enabled: boolean, setting: RowSetting, content: TemplateResult): TemplateResult {
  if (setting.pressable) return pressable(context, id, cell, enabled, content);
  return html`<button
    type="button"
    class=${cellClass(cell, 'tappable')}
    ?disabled=${!enabled}
    aria-pressed=${setting.use === 'choice' ? String(cell.accessory === 'checkmark') : nothing}
    ${styled(cellLook(cell))}
    @click=${() => void context.act({ action: 'tap', node: id })}
  >${content}</button>`;
}

function pressable(context: Context, id: string, cell: CellNode, enabled: boolean, content: TemplateResult): TemplateResult {
  return html`<button
    type="button"
    class=${cellClass(cell, 'tappable pressable')}
    ?disabled=${!enabled}
    ${styled(cellLook(cell))}
    @pointerdown=${(event: PointerEvent) => pressBegins(context, id, event)}
    @keydown=${(event: KeyboardEvent) => pressKey(context, id, event)}
    @click=${() => pressClick(context, id)}
    @contextmenu=${(event: Event) => event.preventDefault()}
  >${content}</button>`;
}

function plainCell(
  context: Context, id: string, node: RowNode, cell: CellNode, enabled: boolean, hasControls: boolean, content: TemplateResult,
): TemplateResult {
  const click = (event: MouseEvent): void => {
    const field = (event.currentTarget as HTMLElement).querySelector<HTMLInputElement>('.text-field:not(:disabled)');
    if (field && event.target !== field) return field.focus();
    if (node.selectable && !(event.target as HTMLElement).closest('button, input')) void context.act({ action: 'tap', node: id });
  };
  return html`<div
    class=${cellClass(cell, hasControls ? 'with-control' : '')}
    role="group"
    aria-label=${node.title || nothing}
    aria-disabled=${enabled ? nothing : 'true'}
    ${styled(cellLook(cell))}
    @click=${click}
  >${content}</div>`;
}

function cellClass(cell: CellNode, more: string): string {
  const disabled = cell.enabled === false ? 'disabled' : '';
  return `cell style-${cell.style} ${cell.animation ? 'animated' : ''} ${cell.cellType ?? ''} ${cell.selected ? 'selected' : ''} ${disabled} ${more}`;
}

function detailButton(context: Context, id: string, node: RowNode): TemplateResult {
  return html`<button class="detail-button" type="button" aria-label="More about ${node.title}"
    @click=${() => void context.act({ action: 'tap', node: id })}>${info()}</button>`;
}

function editingControl(context: Context, id: string, node: RowNode, editing: Editing): TemplateResult | typeof nothing {
  const style = node.editing?.style ?? 'none';
  if (style === 'none') return nothing;
  return html`<button class="editing-control ${style}" type="button"
    aria-label="${style === 'delete' ? 'Remove' : 'Insert'} ${rowName(context.tree, id)}"
    @click=${() => void editing.commit(id)}>${style === 'delete' ? minus() : plus()}</button>`;
}

/** By which a row is moved: dragged, lifted with Space, or through a menu on a click. */
function handle(context: Context, id: string, editing: Editing): TemplateResult {
  return html`<button class="reorder" type="button" aria-label="Move ${rowName(context.tree, id)}"
    aria-haspopup="menu" aria-expanded=${editing.hasMenu(id)} aria-describedby=${editing.helpId}
    @pointerdown=${(event: PointerEvent) => editing.grab(event, id)}
    @keydown=${(event: KeyboardEvent) => editing.key(event, id)}
    @keyup=${(event: KeyboardEvent) => event.key === ' ' && event.preventDefault()}
    @click=${(event: MouseEvent) => editing.openMenu(event, id)}>${grip()}</button>`;
}
