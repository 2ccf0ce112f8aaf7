// Views that stand where their frame says: what a page or a cell adds by itself.

import { html, nothing, type TemplateResult } from 'lit';
import type { ButtonNode, ImageNode, LabelNode, Picture, TreeNode } from '../protocol/tree.js';
import { styled, type Styles } from '../directives/styled.js';
import { cssColor, cssTextColor, cssWeight } from './color.js';
import { isDark, type Context } from './context.js';
import { controlFor } from './control.js';
import { spinner, symbol } from './icons.js';

/** A picture of the tree; its bytes are asked for by the hash of their content. */
export function picture(image: Picture, className: string, name = ''): TemplateResult {
  if ('symbol' in image) return symbol(image.symbol, name);
  return html`<img class=${className} src="images/${image.hash}" alt=${name} draggable="false"
    ${styled({ '--width': `${image.width}px`, '--height': `${image.height}px` })}>`;
}

/**
 * Whether texts are made readable on the grounds that pages have, or keep their exact colours, as on
 * a ground of their own.
 */
export type TextColors = 'readable' | 'exact';

/** The look that any view may have. */
export function lookOf(node: TreeNode): Styles {
  const layer = node.layer;
  return {
    opacity: typeof node.alpha === 'number' ? node.alpha : undefined,
    'background-color': cssColor(node.background),
    'overflow': layer?.radius || layer?.mask ? 'clip' : undefined,
    'border-radius': layer?.radius ? `${layer.radius}px` : undefined,
    'border': layer?.borderWidth ? `${layer.borderWidth}px solid ${cssColor(layer.borderColor) ?? 'currentcolor'}` : undefined,
    'mask-image': layer?.mask && 'hash' in layer.mask ? `url("images/${layer.mask.hash}")` : undefined,
    '--tint': cssColor(node.tint),
    '--tint-text': cssColor(node.tint),
    '--duration': node.animation ? `${node.animation.duration}s` : undefined,
  };
}

/** The children of a node, each at its frame. */
export function placedChildren(context: Context, id: string, colors: TextColors = 'readable'): TemplateResult[] {
  const children = context.tree.nodes[id]?.children ?? [];
  return children.map((child) => placedView(context, child, colors));
}

export function placedView(context: Context, id: string, colors: TextColors = 'readable'): TemplateResult {
  const node = context.tree.nodes[id];
  if (!node || node.hidden) return html``;
  return html`<div class="view view-${node.kind} ${node.animation ? 'animated' : ''}" ${styled({ ...frameOf(node), ...lookOf(node) })}>
    ${viewContent(context, id, node, colors)}
  </div>`;
}

function frameOf(node: TreeNode): Styles {
  const [x, y, width, height] = node.frame ?? [0, 0, 0, 0];
  return { left: `${x}px`, top: `${y}px`, width: `${width}px`, height: `${height}px` };
}

function viewContent(context: Context, id: string, node: TreeNode, colors: TextColors): unknown {
  switch (node.kind) {
    case 'label': return label(context, node, colors);
    case 'image': return image(node);
    case 'button': return button(context, id, node);
    case 'activity': return node.animating ? html`<span class="spinner" role="progressbar" aria-label="Busy">${spinner()}</span>` : nothing;
    case 'view': return placedChildren(context, id, colors);
    default: return controlFor(context, id, node.label ?? '', node.interactive !== false) ?? placedChildren(context, id);
  }
}

// A label lies in a frame that does not grow with the text size, so that it grows less than a cell's own texts.
function label(context: Context, node: LabelNode, colors: TextColors): TemplateResult {
  return html`<span dir="auto" class="label" ${styled({
    color: colors === 'exact' ? cssColor(node.color) : cssTextColor(node.color, isDark(context) ? 'dark' : 'light'),
    'font-size': node.size ? `calc(${node.size}px * min(var(--text-scale), 1.6))` : undefined,
    'font-weight': cssWeight(node.weight),
    'text-align': node.alignment === 'natural' ? undefined : node.alignment,
    '-webkit-line-clamp': node.lines || undefined,
  })}>${node.string}</span>`;
}

// The platform's content modes.
const fits: Record<ImageNode['contentMode'], string> = { scaleToFill: 'fill', scaleAspectFit: 'contain', scaleAspectFill: 'cover', center: 'none' };

function image(node: ImageNode): TemplateResult | typeof nothing {
  if (!node.image) return nothing;
  return html`<div class="image-view" ${styled({ '--fit': fits[node.contentMode] })}>
    ${picture(node.image, 'placed-image', node.label ?? '')}
  </div>`;
}

function button(context: Context, id: string, node: ButtonNode): TemplateResult {
  return html`<button type="button" class="plain-button" data-node=${id}
    ?disabled=${node.enabled === false}
    @click=${() => void context.act({ action: 'tap', node: id })}>${node.string}</button>`;
}
