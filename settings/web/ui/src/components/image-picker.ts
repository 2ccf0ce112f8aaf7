// The system's photo picker: the photos of the device's library, and pictures of the user's own, which
// are chosen from the disk or dropped here and go to the server first.

import { html, nothing, type TemplateResult } from 'lit';
import type { ImagePickerNode, Picture } from '../protocol/tree.js';
import { sendPhoto } from '../protocol/photos.js';
import { styled } from '../directives/styled.js';
import type { Context } from './context.js';
import { spinner, warning } from './icons.js';
import { LightElement } from './light-element.js';
import { picture, placedChildren } from './views.js';
import './modal.js';

type Photo = NonNullable<ImagePickerNode['photos']>[number];

export class ZvImagePicker extends LightElement {
  static override properties = {
    context: { attribute: false },
    node: { attribute: false },
    nodeId: { attribute: false },
    _over: { state: true },
    _sending: { state: true },
    _problem: { state: true },
  };

  declare context: Context;
  declare node: ImagePickerNode;
  declare nodeId: string;
  // A file is held over the picker.
  declare private _over: boolean;
  declare private _sending: boolean;
  declare private _problem: string;

  constructor() {
    super();
    this._over = false;
    this._sending = false;
    this._problem = '';
  }

  protected override render(): TemplateResult {
    const busy = this.node.busy || this._sending;
    const { photos } = this.node;
    return html`<zv-modal .name=${'Photos'} .kind=${'dialog'} .cancel=${this._close} class="sheet-modal">
      <div class="sheet-page image-picker" data-node=${this.nodeId} aria-busy=${String(busy)}
        @dragover=${this._dragOver} @dragleave=${this._dragLeave} @drop=${this._dropped}>
        <header class="sheet-bar"><button type="button" class="plain-button" @click=${this._close}>Cancel</button><h2>Photos</h2><span></span></header>
        <div class="photo-content">
          ${this._own(busy)}
          ${this._problem ? html`<p class="photo-problem" role="alert">${warning()}${this._problem}</p>` : nothing}
          <div class="photos">${photos.map((photo) => this._photo(photo, busy))}</div>
          ${photos.length > 0 ? nothing : html`<p class="sheet-note">There are no photos on this device.</p>`}
        </div>
        ${this._over ? html`<div class="drop-here" aria-hidden="true">Drop the picture here</div>` : nothing}
        ${this._layers()}
      </div>
    </zv-modal>`;
  }

  private _own(busy: boolean): TemplateResult {
    return html`<label class="own-photo ${busy ? 'off' : ''}">
      <input class="visually-hidden" type="file" accept="image/png,image/jpeg" ?disabled=${busy} @change=${this._chosen}>
      ${this._sending ? html`<span class="spinner">${spinner()}</span>Sending the picture…` : html`<strong>Choose a picture of your own…</strong><small>or drop one here: PNG or JPEG</small>`}
    </label>`;
  }

  private _photo({ name, image, problem }: Photo, busy: boolean): TemplateResult {
    const label = problem === undefined ? name : `${name}: ${problem}`;
    return html`<button type="button" class="photo ${problem === undefined ? '' : 'broken'}" aria-label=${label} title=${label}
      ?disabled=${busy || problem !== undefined} @click=${() => this._choose(name)}
    >${image ? thumbnail(image) : html`${warning()}<span>${name}</span>`}</button>`;
  }

  /** What the application has laid over the picker, in the middle of it as it was in the middle of the view. */
  private _layers(): TemplateResult | typeof nothing {
    if (this.node.children.length === 0) return nothing;
    const [, , width = 0, height = 0] = this.node.frame ?? [];
    return html`<div class="sheet-over"><div class="sheet-layers" ${styled({ width: `${width}px`, height: `${height}px` })}>
      ${placedChildren(this.context, this.nodeId)}
    </div></div>`;
  }

  private _choose(name: string): void {
    this._problem = '';
    void this.context.act({ action: 'photo', node: this.nodeId, name });
  }

  private readonly _close = (): void => void this.context.act({ action: 'close', node: this.nodeId });

  // --- a picture of the user's own ---

  private readonly _chosen = (event: Event): void => {
    const input = event.target as HTMLInputElement;
    const file = input.files?.[0];
    if (file) void this._send(file);
    input.value = '';
  };

  private readonly _dragOver = (event: DragEvent): void => {
    if (!event.dataTransfer?.types.includes('Files')) return;
    event.preventDefault();
    const free = !this.node.busy && !this._sending;
    event.dataTransfer.dropEffect = free ? 'copy' : 'none';
    this._over = free;
  };

  private readonly _dragLeave = (event: DragEvent): void => {
    if (!(event.currentTarget as HTMLElement).contains(event.relatedTarget as Node | null)) this._over = false;
  };

  private readonly _dropped = (event: DragEvent): void => {
    event.preventDefault();
    this._over = false;
    const file = event.dataTransfer?.files[0];
    if (file && !this.node.busy && !this._sending) void this._send(file);
  };

  private async _send(file: File): Promise<void> {
    this._problem = '';
    this._sending = true;
    const sent = await sendPhoto(file);
    this._sending = false;
    if (!this.isConnected) return;
    if (sent.name === undefined) this._problem = sent.problem;
    else this._choose(sent.name);
  }
}

function thumbnail(image: Picture): TemplateResult {
  return picture(image, 'photo-image');
}

customElements.define('zv-image-picker', ZvImagePicker);
