// A dialog over the pages of the phone. It takes the focus, traps it, and restores it. Escape closes it.

/** Wraps the dialog's content, which stays a child of this element. */
export class ZvModal extends HTMLElement {
  /** The dialog's name. */
  set name(name: string) {
    this.setAttribute('aria-label', name);
  }
  /** The id of the dialog's text, which is read aloud after the name when it opens. */
  set text(id: string | undefined) {
    if (id === undefined) this.removeAttribute('aria-describedby');
    else this.setAttribute('aria-describedby', id);
  }
  /** An alert that asks for an answer, or a dialog to work in. */
  set kind(kind: 'alertdialog' | 'dialog') {
    this.setAttribute('role', kind);
  }
  /** Closes the dialog without a choice. */
  cancel: () => void = () => undefined;
  private _before: Element | null = null;

  connectedCallback(): void {
    if (!this.hasAttribute('role')) this.setAttribute('role', 'alertdialog');
    this.setAttribute('aria-modal', 'true');
    this._before = document.activeElement;
    this.addEventListener('keydown', this._key);
    queueMicrotask(() => this._firstStop()?.focus());
  }

  disconnectedCallback(): void {
    this.removeEventListener('keydown', this._key);
    const before = this._before;
    // The element that had the focus is behind an inert layer until the page is rendered again.
    queueMicrotask(() => before instanceof HTMLElement && before.isConnected && before.focus());
  }

  /** The harmless choice, if there is one. */
  private _firstStop(): HTMLElement | undefined {
    return this.querySelector<HTMLElement>('button.cancel') ?? this._stops()[0];
  }

  private _stops(): HTMLElement[] {
    const all = this.querySelectorAll<HTMLElement>('button:not(:disabled), input:not(:disabled), [tabindex]');
    return [...all].filter((stop) => stop.tabIndex >= 0 && stop.checkVisibility());
  }

  private readonly _key = (event: KeyboardEvent): void => {
    if (event.key === 'Escape') {
      event.stopPropagation();
      this.cancel();
    } else if (event.key === 'Tab') {
      this._keepInside(event);
    }
  };

  private _keepInside(event: KeyboardEvent): void {
    const stops = this._stops();
    const edge = event.shiftKey ? stops[0] : stops[stops.length - 1];
    if (document.activeElement !== edge) return;
    event.preventDefault();
    (event.shiftKey ? stops[stops.length - 1] : stops[0])?.focus();
  }
}

customElements.define('zv-modal', ZvModal);
