// What stands in a cell: picture, texts, controls, accessory.

import { html, nothing, type TemplateResult } from 'lit';
import type { CellNode, Picture, RowNode, Text, TreeNode } from '../protocol/tree.js';
import { styled, type Styles } from '../directives/styled.js';
import { cssTextColor, cssWeight } from './color.js';
import { isDark, type Context } from './context.js';
import { controlFor, isControlKind } from './control.js';
import { checkmark, chevronRight } from './icons.js';
import { lookOf, picture, placedChildren, placedView } from './views.js';

const standardTextSize = 17;
const smallPicture = 29;

/** The names of the controls in a cell, those of its content first. */
export function controlsOf(context: Context, id: string, row: RowNode): string[] {
  return partsOf(context, id, row).filter((part) => isControl(context, part));
}

export function cellLook(cell: CellNode): Styles {
  return { ...lookOf(cell), opacity: cell.alpha };
}

export function cellContent(context: Context, id: string, cell: CellNode, row: RowNode, enabled: boolean): TemplateResult {
  const parts = partsOf(context, id, row);
  const name = row.title || cell.text?.string || '';
  const accessory = partOf(context, id, accessoryRole(row));
  return html`
    ${cell.image ? cellPicture(context, id, cell.image) : nothing}
    ${texts(context, cell)}
    ${parts.filter((part) => part !== accessory).map((part) => isControl(context, part)
      ? html`<span class="cell-control control-${context.tree.nodes[part]?.kind}">${controlFor(context, part, name, enabled)}</span>`
      : placedView(context, part))}
    ${accessory !== undefined && !context.tree.nodes[accessory]?.hidden ? accessoryView(context, accessory, name, enabled) : nothing}
    ${accessoryMark(cell)}`;
}

/** What was added to the content of a cell, then what was added to the cell itself. */
function partsOf(context: Context, id: string, row: RowNode): string[] {
  const { nodes } = context.tree;
  const unused = row.editing ? 'accessoryView' : 'editingAccessoryView';
  return (nodes[id]?.children ?? []).flatMap((child) => {
    const role = nodes[child]?.role;
    if (role === 'content') return (nodes[child]?.children ?? []).filter((part) => nodes[part]?.role !== 'imageView');
    return role === unused ? [] : [child];
  });
}

/** How wide the cell's picture is, in points; 0 where it has none. */
export function pictureWidth(context: Context, id: string, cell: CellNode): number {
  if (!cell.image) return 0;
  const view = pictureView(context, id);
  const own = 'width' in cell.image ? Math.min(cell.image.width, smallPicture) : smallPicture;
  return view === undefined ? own : (context.tree.nodes[view]?.frame?.[2] ?? own);
}

function pictureView(context: Context, id: string): string | undefined {
  const { nodes } = context.tree;
  const content = nodes[id]?.children.find((child) => nodes[child]?.role === 'content');
  return content === undefined ? undefined : nodes[content]?.children.find((child) => nodes[child]?.role === 'imageView');
}

// The picture, and what lies over it. It says nothing that the texts do not say.
function cellPicture(context: Context, id: string, image: Picture): TemplateResult {
  const view = pictureView(context, id);
  if (view === undefined) return picture(image, 'cell-image');
  const [, , width = smallPicture, height = smallPicture] = context.tree.nodes[view]?.frame ?? [];
  return html`<span class="cell-picture" aria-hidden="true" ${styled({ width: `${width}px`, height: `${height}px` })}>
    ${picture(image, 'cell-picture-ground')}${placedChildren(context, view, 'exact')}
  </span>`;
}

// A table that is being edited shows the accessories that are meant for that, and no others.
function accessoryRole(row: RowNode): string {
  return row.editing ? 'editingAccessoryView' : 'accessoryView';
}

function partOf(context: Context, id: string, role: string): string | undefined {
  const { nodes } = context.tree;
  return nodes[id]?.children.find((child) => nodes[child]?.role === role);
}

function isControl(context: Context, id: string): boolean {
  const node = context.tree.nodes[id];
  return node !== undefined && !node.hidden && isControlKind(node.kind);
}

function accessoryView(context: Context, id: string, name: string, enabled: boolean): TemplateResult {
  const node = context.tree.nodes[id];
  if (isDisclosure(node)) return chevronRight();
  const [, , width = 0, height = 0] = node?.frame ?? [];
  const control = controlFor(context, id, name, enabled);
  if (control) return html`<span class="accessory-view control-${node?.kind}">${control}</span>`;
  return html`<span class="accessory-view" ${styled({ width: `${width}px`, height: `${height}px` })}>${placedView(context, id)}</span>`;
}

// The cell's own chevron, shown as a view: it looks as the accessory of that name does.
function isDisclosure(node: TreeNode | undefined): boolean {
  return node?.kind === 'image' && node.image !== undefined && 'symbol' in node.image && node.image.symbol === 'chevron.right';
}

function accessoryMark(cell: CellNode): TemplateResult | typeof nothing {
  if (cell.accessory === 'disclosure') return chevronRight();
  if (cell.accessory === 'checkmark') return checkmark();
  return nothing;
}

function texts(context: Context, cell: CellNode): TemplateResult | typeof nothing {
  const { text, detail } = cell;
  if (!text?.string && !detail?.string) return nothing;
  return html`<span class="texts">
    ${text?.string ? line(context, cell.selected && text.highlightedColor ? { ...text, color: text.highlightedColor } : text, 'text') : nothing}
    ${detail?.string ? line(context, detail, 'detail') : nothing}
  </span>`;
}

// A text has the direction of its own writing and stands at the left in either: what does not fit is its end.
function line(context: Context, text: Text, kind: 'text' | 'detail'): TemplateResult {
  const alone = (text.lines ?? 1) === 1;
  return html`<span dir="auto" class="${kind} ${alone ? 'one-line' : ''}" ${styled({
    color: cssTextColor(text.color, isDark(context) ? 'dark' : 'light'),
    opacity: text.alpha,
    'font-size': text.size && text.size !== standardTextSize ? `calc(${text.size}px * var(--text-scale))` : undefined,
    'font-weight': cssWeight(text.weight),
    '--lines': text.lines === undefined ? 1 : text.lines || 'none',
  })}>${text.string}</span>`;
}
