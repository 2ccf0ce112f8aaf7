import { html, nothing, type TemplateResult } from 'lit';
import type { ImagePickerNode } from '../protocol/tree.js';
import type { Context } from './context.js';
import { picture, placedChildren } from './views.js';
import './modal.js';

/** The system's photo picker over the device's photo library. */
export function imagePicker(context: Context, id: string, node: ImagePickerNode): TemplateResult {
  const close = (): void => void context.act({ action: 'close', node: id });
  return html`<zv-modal .name=${'Photos'} .cancel=${close} class="sheet-modal">
    <div class="sheet-page" data-node=${id}>
      <header class="sheet-bar"><h2>Photos</h2><button type="button" class="plain-button" @click=${close}>Cancel</button></header>
      <div class="photos">${(node.photos ?? []).map((photo) => html`<button type="button" class="photo" aria-label=${photo.name}
        ?disabled=${node.busy ?? false}
        @click=${() => void context.act({ action: 'photo', node: id, name: photo.name })}
      >${photo.image ? picture(photo.image, 'photo-image') : photo.name}</button>`)}</div>
      ${node.photos?.length ? nothing : html`<p class="sheet-note">There are no photos on this device.</p>`}
      ${placedChildren(context, id)}
    </div>
  </zv-modal>`;
}
