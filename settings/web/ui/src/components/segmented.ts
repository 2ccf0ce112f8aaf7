// A segmented control: a group of radio buttons with one tab stop and a thumb that slides. A finger
// may come down on one segment and go up on another; the one where it goes up is asked for.

import { html, type PropertyValues, type TemplateResult } from 'lit';
import type { SegmentedNode } from '../protocol/tree.js';
import { ControlElement } from './control-element.js';
import { styled } from '../directives/styled.js';
import { stopByKey } from './stops.js';

export class ZvSegmented extends ControlElement<SegmentedNode> {
  static override properties = {
    _draft: { state: true },
    _pressed: { state: true },
  };

  // What was asked for, until it is answered.
  declare private _draft: number | undefined;
  declare private _pressed: number | undefined;
  private _focusNext = false;

  protected override render(): TemplateResult {
    const { segments } = this.node;
    const shown = this._shown;
    const thumb = { '--count': segments.length || 1, '--index': Math.max(0, shown) };
    return html`<div
      class="segmented"
      role="radiogroup"
      aria-label=${this.name}
      aria-disabled=${this.disabled ? 'true' : 'false'}
      data-node=${this.nodeId}
      ${styled(thumb)}
      @keydown=${this._key}
      @pointerdown=${this._down}
      @pointermove=${this._move}
      @pointerup=${this._up}
      @pointercancel=${this._cancel}
    >
      <span class="segment-thumb" ?hidden=${shown < 0}></span>
      ${segments.map((title, index) => this._segment(title, index, shown))}
    </div>`;
  }

  private _segment(title: string, index: number, shown: number): TemplateResult {
    const separated = index > 0 && index !== shown && index - 1 !== shown;
    return html`<button
      class="segment ${separated ? 'separated' : ''} ${index === this._pressed ? 'pressed' : ''}"
      type="button"
      role="radio"
      aria-checked=${index === shown}
      tabindex=${index === Math.max(0, shown) ? 0 : -1}
      ?disabled=${this.disabled}
      @click=${(event: MouseEvent) => event.detail === 0 && this._choose(index)}
    ><span data-text=${title}>${title}</span></button>`;
  }

  private get _shown(): number {
    return this._draft ?? this.node.selected;
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    if (!this._focusNext) return;
    this._focusNext = false;
    this.querySelector<HTMLElement>('[tabindex="0"]')?.focus();
  }

  private async _choose(index: number): Promise<void> {
    if (this.disabled || index === this._shown) return;
    this._draft = index;
    await this.context.act({ action: 'segment', node: this.nodeId, index });
    if (this._draft === index) this._draft = undefined;
  }

  private _key(event: KeyboardEvent): void {
    const target = stopByKey(event.key, Math.max(0, this._shown), this.node.segments.length, 'any');
    if (target === undefined || this.disabled) return;
    event.preventDefault();
    this._focusNext = true;
    void this._choose(target);
  }

  private _indexAt(x: number): number {
    const box = this.getBoundingClientRect();
    const count = this.node.segments.length;
    return Math.min(count - 1, Math.max(0, Math.floor(((x - box.left) / box.width) * count)));
  }

  private _down(event: PointerEvent): void {
    if (this.disabled || event.button !== 0) return;
    this._pressed = this._indexAt(event.clientX);
    (event.currentTarget as HTMLElement).setPointerCapture(event.pointerId);
  }

  private _move(event: PointerEvent): void {
    if (this._pressed !== undefined) this._pressed = this._indexAt(event.clientX);
  }

  private _up(event: PointerEvent): void {
    if (this._pressed === undefined) return;
    this._pressed = undefined;
    void this._choose(this._indexAt(event.clientX));
  }

  private _cancel(): void {
    this._pressed = undefined;
  }
}

customElements.define('zv-segmented', ZvSegmented);
