import { html, type TemplateResult } from 'lit';
import type { Kind } from '../protocol/tree.js';
import type { Context } from './context.js';
import './segmented.js';
import './slider.js';
import './switch.js';
import './text-field.js';

/** The kinds of nodes that take input, inside a row or alone. */
export const controlKinds: readonly Kind[] = ['switch', 'segmented', 'slider', 'textField'];

/** The control for a node, or nothing if the node is not a control. `name` is its accessible name. */
export function controlFor(context: Context, id: string, name: string, enabled: boolean): TemplateResult | undefined {
  const node = context.tree.nodes[id];
  if (!node) return undefined;
  const called = node.label ?? name;
  const off = !enabled || node.interactive === false || ('enabled' in node && node.enabled === false);
  switch (node.kind) {
    case 'switch': return html`<zv-switch .context=${context} .node=${node} .nodeId=${id} .name=${called} .disabled=${off}></zv-switch>`;
    case 'segmented': return html`<zv-segmented .context=${context} .node=${node} .nodeId=${id} .name=${called} .disabled=${off}></zv-segmented>`;
    case 'slider': return html`<zv-slider .context=${context} .node=${node} .nodeId=${id} .name=${called} .disabled=${off}></zv-slider>`;
    case 'textField': return html`<zv-text-field .context=${context} .node=${node} .nodeId=${id} .name=${called} .disabled=${off}></zv-text-field>`;
    default: return undefined;
  }
}
