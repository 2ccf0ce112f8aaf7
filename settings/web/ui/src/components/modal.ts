// A dialog over the pages of the phone: takes the focus, keeps it, and gives it back. Escape leaves.

/** Wraps the dialog's content, which stays its own child. */
export class ZvModal extends HTMLElement {
  /** What the dialog is called. */
  set name(name: string) {
    this.setAttribute('aria-label', name);
  }
  /** The id of what it says beyond its name, which is read out as well when it comes. */
  set text(id: string | undefined) {
    if (id === undefined) this.removeAttribute('aria-describedby');
    else this.setAttribute('aria-describedby', id);
  }
  /** A dialog that asks for an answer, or one in which one works. */
  set kind(kind: 'alertdialog' | 'dialog') {
    this.setAttribute('role', kind);
  }
  /** Leaves the dialog without a choice. */
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
    // What had the focus is behind an inert layer until the page has been drawn again.
    queueMicrotask(() => before instanceof HTMLElement && before.isConnected && before.focus());
  }

  /** What does no harm, where that is offered. */
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
