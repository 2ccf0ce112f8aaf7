import type { TemplateResult } from 'lit';
import { html, literal, type StaticValue } from 'lit/static-html.js';
import type { Kind } from '../protocol/tree.js';
import type { Context } from './context.js';
import './segmented.js';
import './slider.js';
import './switch.js';
import './text-field.js';

/** The kinds that take input by themselves, inside a row or alone, and their components. */
const controls: Partial<Record<Kind, StaticValue>> = {
  switch: literal`zv-switch`,
  segmented: literal`zv-segmented`,
  slider: literal`zv-slider`,
  textField: literal`zv-text-field`,
};

export function isControlKind(kind: Kind): boolean {
  return controls[kind] !== undefined;
}

/** The control for a node, or nothing where the node is no control. `name` is what it is called. */
export function controlFor(context: Context, id: string, name: string, enabled: boolean): TemplateResult | undefined {
  const node = context.tree.nodes[id];
  const tag = node && controls[node.kind];
  if (!tag) return undefined;
  const off = !enabled || node.interactive === false || ('enabled' in node && node.enabled === false);
  return html`<${tag} .context=${context} .node=${node} .nodeId=${id} .name=${node.label ?? name} .disabled=${off}></${tag}>`;
}
