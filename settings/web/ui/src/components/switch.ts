// A switch goes over at once, as under a finger, and stands where it was asked to until the answer;
// afterwards it shows what the tree says.

import { html, type TemplateResult } from 'lit';
import type { SwitchNode } from '../protocol/tree.js';
import { ControlElement } from './control-element.js';

export class ZvSwitch extends ControlElement<SwitchNode> {
  static override properties = {
    _draft: { state: true },
  };

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
    return this._draft ?? this.node.on;
  }

  private async _toggle(): Promise<void> {
    const on = !this._shown;
    this._draft = on;
    await this.context.act({ action: 'toggle', node: this.nodeId, on });
    if (this._draft === on) this._draft = undefined;
  }
}

customElements.define('zv-switch', ZvSwitch);
