// A slider over the browser's own range input, which brings touch, keyboard and screen reader. While
// the finger is on it the slider shows its own value; afterwards what the tree says.

import { html, nothing, type TemplateResult } from 'lit';
import { live } from 'lit/directives/live.js';
import type { SliderNode } from '../protocol/tree.js';
import { ControlElement } from './control-element.js';
import { styled } from '../directives/styled.js';

const smoothKeySteps = 20;

export class ZvSlider extends ControlElement<SliderNode> {
  static override properties = {
    _draft: { state: true },
  };

  declare private _draft: number | undefined;
  private _frame: number | undefined;

  protected override render(): TemplateResult {
    const { min, max, segmentCount } = this.node;
    const value = this._draft ?? this.node.value;
    const part = max > min ? (Math.min(max, Math.max(min, value)) - min) / (max - min) : 0;
    return html`<div class="slider ${segmentCount > 0 ? 'ticked' : ''}" ${styled({ '--part': part })}>
      <div class="slider-track">
        ${segmentCount > 0 ? ticks(segmentCount) : nothing}
        <input
          type="range"
          data-node=${this.nodeId}
          aria-label=${this.name}
          aria-valuetext=${valueText(value)}
          min=${min}
          max=${max}
          step=${segmentCount > 0 ? (max - min) / segmentCount : 'any'}
          .value=${live(String(value))}
          ?disabled=${this.disabled}
          @input=${this._input}
          @change=${this._change}
          @keydown=${this._key}
        >
      </div>
      ${this.node.showValue ? html`<output class="slider-value" aria-hidden="true">${valueText(value)}</output>` : nothing}
    </div>`;
  }

  private _input(event: Event): void {
    this._draft = (event.target as HTMLInputElement).valueAsNumber;
    if (!this.node.continuous || this._frame !== undefined) return;
    this._frame = requestAnimationFrame(() => {
      this._frame = undefined;
      if (this._draft !== undefined) void this._send(this._draft, 'move');
    });
  }

  private _change(event: Event): void {
    if (this._frame !== undefined) cancelAnimationFrame(this._frame);
    this._frame = undefined;
    void this._end((event.target as HTMLInputElement).valueAsNumber);
  }

  private async _end(value: number): Promise<void> {
    this._draft = value;
    await this._send(value, 'end');
    if (this._draft === value) this._draft = undefined;
  }

  private _send(value: number, phase: 'move' | 'end'): Promise<void> {
    return this.context.act({ action: 'slide', node: this.nodeId, value, phase });
  }

  // A smooth slider would otherwise move by a hundredth with each key.
  private _key(event: KeyboardEvent): void {
    const { min, max, segmentCount } = this.node;
    const steps = { ArrowRight: 1, ArrowUp: 1, ArrowLeft: -1, ArrowDown: -1, PageUp: 4, PageDown: -4 }[event.key];
    if (steps === undefined || segmentCount > 0) return;
    event.preventDefault();
    const value = this._draft ?? this.node.value;
    void this._end(Math.min(max, Math.max(min, value + (steps * (max - min)) / smoothKeySteps)));
  }
}

function ticks(count: number): TemplateResult {
  return html`<span class="ticks" aria-hidden="true">${Array.from({ length: count + 1 }, () => html`<i></i>`)}</span>`;
}

function valueText(value: number): string {
  return value.toFixed(2);
}

customElements.define('zv-slider', ZvSlider);
