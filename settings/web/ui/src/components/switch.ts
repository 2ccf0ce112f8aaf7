import { html, type TemplateResult } from 'lit';
import type { SwitchNode } from '../protocol/tree.js';
import type { Context } from './context.js';

/** A switch shows what the tree says and only asks for the other state. */
export function switchControl(context: Context, id: string, node: SwitchNode, name: string, enabled: boolean): TemplateResult {
  const on = node.on ?? false;
  const toggle = (): void => void context.act({ action: 'toggle', node: id, on: !on });
  return html`<button
    class="switch"
    role="switch"
    type="button"
    data-node=${id}
    aria-checked=${on}
    aria-label=${name}
    ?disabled=${!enabled || node.enabled === false}
    @click=${toggle}
  ><span class="switch-thumb"></span></button>`;
}
