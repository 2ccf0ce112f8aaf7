// The system's colour picker: a grid, a spectrum, sliders with a hex field, and the opacity where it
// is offered. Each change is told while it is open, the last one again where several came before an
// answer; leaving it ends it.

import { html, nothing, type PropertyValues, type TemplateResult } from 'lit';
import type { ColorPickerNode } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import { cssColor } from './color.js';
import { colorGrid } from './color-grid.js';
import { colorSliders, opacitySlider } from './color-sliders.js';
import { colorSpectrum } from './color-spectrum.js';
import type { Context } from './context.js';
import { cross } from './icons.js';
import { LightElement } from './light-element.js';
import { colorName, hexOf, parseComputed, type Rgba } from './picked-color.js';
import { stopByKey } from './stops.js';
import './modal.js';

type Way = 'Grid' | 'Spectrum' | 'Sliders';
const ways: readonly Way[] = ['Grid', 'Spectrum', 'Sliders'];

export class ZvColorPicker extends LightElement {
  static override properties = {
    context: { attribute: false },
    node: { attribute: false },
    nodeId: { attribute: false },
    _way: { state: true },
    _draft: { state: true },
    _named: { state: true },
  };

  declare context: Context;
  declare node: ColorPickerNode;
  declare nodeId: string;
  declare private _way: Way;
  // What the user has picked last, until the application has answered.
  declare private _draft: Rgba | undefined;
  // The components of a colour that is given by its name.
  declare private _named: Rgba | undefined;
  // What is on its way to the application, and what ends when that is answered.
  private _told: Rgba | undefined;
  private _answer: Promise<void> | undefined;

  constructor() {
    super();
    this._way = 'Grid';
  }

  private get _rgba(): Rgba {
    if (this._draft) return this._draft;
    const { color } = this.node;
    return color && 'rgba' in color ? color.rgba : (this._named ?? [0, 0, 0, 1]);
  }

  protected override render(): TemplateResult {
    const title = this.node.title || 'Colors';
    const rgba = this._rgba;
    return html`<zv-modal .name=${title} .kind=${'dialog'} .cancel=${this._close} class="sheet-modal">
      <div class="sheet-page color-picker" data-node=${this.nodeId}>
        <header class="sheet-bar"><span></span><h2>${title}</h2>
          <button type="button" class="round-close" aria-label="Close" @click=${this._close}>${cross()}</button></header>
        ${this._ways()}
        <div class="color-way" id="color-way" role="tabpanel" aria-labelledby="color-${this._way}">${this._panel(rgba)}</div>
        ${this.node.alpha === true ? html`<h3 class="color-heading">Opacity</h3>${opacitySlider(rgba, this._pick)}` : nothing}
        <div class="color-result">
          <span class="color-sample"><i ${styled({ 'background-color': cssColor(this._draft ? { rgba } : this.node.color) })}></i></span>
          <p><span class="color-name">${colorName(rgba)}</span><output>#${hexOf(rgba)}</output></p>
        </div>
      </div>
    </zv-modal>`;
  }

  private _ways(): TemplateResult {
    return html`<div class="picker-ways" role="tablist" aria-label="Ways to choose" @keydown=${this._wayKey}>
      ${ways.map((way) => html`<button type="button" role="tab" id="color-${way}" aria-controls="color-way"
        aria-selected=${way === this._way} tabindex=${way === this._way ? 0 : -1} @click=${() => (this._way = way)}>${way}</button>`)}
    </div>`;
  }

  private _panel(rgba: Rgba): TemplateResult {
    const withAlpha = (rgb: [number, number, number]): void => this._pick([...rgb, rgba[3]]);
    switch (this._way) {
      case 'Grid': return colorGrid(rgba, withAlpha);
      case 'Spectrum': return colorSpectrum(rgba, withAlpha);
      case 'Sliders': return colorSliders(rgba, this._pick);
    }
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    if (!changed.has('node') || 'rgba' in this.node.color) return;
    const sample = this.querySelector('.color-sample i');
    if (sample) this._named = parseComputed(getComputedStyle(sample).getPropertyValue('background-color'));
  }

  private readonly _wayKey = (event: KeyboardEvent): void => {
    const way = ways[stopByKey(event.key, ways.indexOf(this._way), ways.length, 'sideways') ?? -1];
    if (way === undefined) return;
    event.preventDefault();
    this._way = way;
    void this.updateComplete.then(() => this.querySelector<HTMLElement>(`#color-${this._way}`)?.focus());
  };

  // What has not been told yet is told before, and nothing afterwards.
  private readonly _close = (): void => {
    this._tellLast();
    void this.context.act({ action: 'close', node: this.nodeId });
  };

  private readonly _pick = (rgba: Rgba): void => {
    this._draft = rgba;
    if (!this._told) void this._tellAll();
  };

  // The colour that was picked last stays until it has been answered, also where that is told at the end.
  private async _tellAll(): Promise<void> {
    let answer: Promise<void> | undefined;
    do {
      this._tellLast();
      answer = this._answer;
      await answer;
    } while (this._draft !== this._told || this._answer !== answer);
    this._draft = undefined;
    this._told = undefined;
  }

  private _tellLast(): void {
    if (!this._draft || this._draft === this._told) return;
    this._told = this._draft;
    this._answer = this.context.act({ action: 'pick', node: this.nodeId, rgba: this._draft });
  }
}

customElements.define('zv-color-picker', ZvColorPicker);
