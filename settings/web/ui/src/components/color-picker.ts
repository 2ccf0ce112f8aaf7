import { html, nothing, type TemplateResult } from 'lit';
import { live } from 'lit/directives/live.js';
import type { ColorPickerNode } from '../protocol/tree.js';
import { styled } from '../directives/styled.js';
import { cssColor } from './color.js';
import type { Context } from './context.js';
import './modal.js';

const channels = ['Red', 'Green', 'Blue', 'Opacity'] as const;

/** The system's colour picker. Every change picks; leaving it ends it. */
export function colorPicker(context: Context, id: string, node: ColorPickerNode): TemplateResult {
  const rgba = node.color && 'rgba' in node.color ? node.color.rgba : [0, 0, 0, 1];
  const offered = (node as { alpha?: boolean | number }).alpha === false ? channels.slice(0, 3) : channels;
  const close = (): void => void context.act({ action: 'close', node: id });
  const pick = (index: number, event: Event): void => {
    const value = (event.target as HTMLInputElement).valueAsNumber;
    void context.act({ action: 'pick', node: id, rgba: rgba.map((old, place) => (place === index ? value : old)) });
  };
  return html`<zv-modal .name=${'Colours'} .cancel=${close} class="sheet-modal">
    <div class="sheet-page" data-node=${id}>
      <header class="sheet-bar"><h2>Colours</h2><button type="button" class="plain-button" @click=${close}>Done</button></header>
      <div class="color-sample" ${styled({ '--sample': node.color ? cssColor(node.color) : 'transparent' })}></div>
      ${offered.map((channel, index) => html`<label class="color-channel">
        <span>${channel}</span>
        <input type="range" min="0" max="1" step="any" .value=${live(String(rgba[index] ?? 0))} @change=${(event: Event) => pick(index, event)}>
        <output>${Math.round((rgba[index] ?? 0) * (index < 3 ? 255 : 100))}${index < 3 ? nothing : ' %'}</output>
      </label>`)}
    </div>
  </zv-modal>`;
}
