// A text field. While it has the focus it shows what is typed; what becomes of it shows afterwards.
// Escape gives the text up, Return and leaving the field end the editing.

import { html, type PropertyValues, type TemplateResult } from 'lit';
import type { TextFieldNode } from '../protocol/tree.js';
import { ControlElement } from './control-element.js';

const inputModes: Record<string, string> = { number: 'numeric', decimal: 'decimal', url: 'url', email: 'email' };

export class ZvTextField extends ControlElement<TextFieldNode> {
  private _holding = false;
  private _cancelled = false;

  protected override render(): TemplateResult {
    const { secure, keyboard = 'default', placeholder = '' } = this.node;
    return html`<input
      class="text-field"
      data-node=${this.nodeId}
      type=${secure ? 'password' : 'text'}
      inputmode=${inputModes[keyboard] ?? 'text'}
      enterkeyhint="done"
      autocomplete="off"
      autocapitalize=${keyboard === 'default' ? 'sentences' : 'none'}
      spellcheck="false"
      aria-label=${this.name}
      placeholder=${placeholder}
      ?disabled=${this.disabled}
      @focus=${this._begin}
      @input=${this._change}
      @blur=${this._end}
      @keydown=${this._key}
    >`;
  }

  private get _field(): HTMLInputElement | null {
    return this.querySelector('input');
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    if (!this._holding) this._showTree();
  }

  private _showTree(): void {
    const field = this._field;
    const { string } = this.node;
    if (field && field.value !== string) field.value = string;
  }

  private _begin(): void {
    this._holding = true;
    this._cancelled = false;
    void this._send('begin');
  }

  private _change(): void {
    void this._send('change');
  }

  private async _end(): Promise<void> {
    await this._send(this._cancelled ? 'cancel' : 'end');
    if (document.activeElement === this._field) return;
    this._holding = false;
    this._showTree();
  }

  private _key(event: KeyboardEvent): void {
    if (event.isComposing || (event.key !== 'Enter' && event.key !== 'Escape')) return;
    event.stopPropagation();
    this._cancelled = event.key === 'Escape';
    this._field?.blur();
  }

  private _send(phase: 'begin' | 'change' | 'end' | 'cancel'): Promise<void> {
    return this.context.act({ action: 'edit', node: this.nodeId, string: this._field?.value ?? '', phase });
  }
}

customElements.define('zv-text-field', ZvTextField);
