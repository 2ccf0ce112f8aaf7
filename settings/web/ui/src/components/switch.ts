// A switch goes over at once, as under a finger, and stands where it was asked to until the answer;
// afterwards it shows what the tree says.

import { html, type TemplateResult } from 'lit';
import type { SwitchNode } from '../protocol/tree.js';
import type { Context } from './context.js';
import { LightElement } from './light-element.js';

export class ZvSwitch extends LightElement {
  static override properties = {
    context: { attribute: false },
    node: { attribute: false },
    nodeId: { attribute: false },
    name: { attribute: false },
    disabled: { attribute: false },
    _draft: { state: true },
  };

  declare context: Context;
  declare node: SwitchNode;
  declare nodeId: string;
  declare name: string;
  declare disabled: boolean;
  // What was asked for, until it is answered.
  declare private _draft: boolean | undefined;

  protected override render(): TemplateResult {
    return html`<button
      class="switch"
      role="switch"
      type="button"
      data-node=${this.nodeId}
      aria-checked=${this._shown}
      aria-label=${this.name}
      ?disabled=${this.disabled}
      @click=${this._toggle}
    ><span class="switch-thumb"></span></button>`;
  }

  private get _shown(): boolean {
    return this._draft ?? this.node.on ?? false;
  }

  private async _toggle(): Promise<void> {
    const on = !this._shown;
    this._draft = on;
    await this.context.act({ action: 'toggle', node: this.nodeId, on });
    if (this._draft === on) this._draft = undefined;
  }
}

customElements.define('zv-switch', ZvSwitch);
