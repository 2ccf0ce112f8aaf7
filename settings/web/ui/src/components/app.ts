// The page: holds the state, renders it, and sends the user's actions.

import { html, nothing, type PropertyValues, type TemplateResult } from 'lit';
import { paneGrid, paneTabs, type PaneName, type PaneState } from '../panes/panes.js';
import { Connection, type Link } from '../protocol/connection.js';
import type { Action, EventMessage, ServerMessage } from '../protocol/messages.js';
import { PageState } from '../protocol/state.js';
import type { Context } from './context.js';
import { arrange, type Arrangement } from './layout.js';
import { LightElement } from './light-element.js';
import { linkBanner, noticeList, webAddress, type Notice, type NoticeKind } from './notices.js';
import { bareScreen, framedScreen, shapeOf } from './screen.js';

const noticeMs = 8000;
const hoverMs = 120;
const tabBarHeight = 50;

export class ZvApp extends LightElement {
  static override properties = {
    _link: { state: true },
    _notices: { state: true },
    _tab: { state: true },
    _spoken: { state: true },
  };

  declare private _link: Link;
  declare private _notices: Notice[];
  declare private _tab: PaneName | 'phone';
  declare private _spoken: string;

  private readonly _state = new PageState();
  private readonly _connection: Connection;
  private _context: Context | undefined;
  private _transition: Context['transition'];
  private _inspected: string | undefined;
  private _restarts = 0;
  private _noticeCount = 0;
  private _hover: number | undefined;
  private _sentBounds = '';
  private _shownLog = 0;

  constructor() {
    super();
    this._link = { state: 'connecting' };
    this._notices = [];
    this._tab = 'phone';
    this._spoken = '';
    const address = new URL('socket', document.baseURI);
    address.protocol = address.protocol === 'https:' ? 'wss:' : 'ws:';
    this._connection = new Connection(address.href, {
      linkChanged: (link) => this._linkChanged(link),
      received: (message) => this._received(message),
    });
  }

  override connectedCallback(): void {
    super.connectedCallback();
    addEventListener('resize', this._resized);
    document.addEventListener('keydown', this._key);
    this.addEventListener('focusin', this._pointedAt);
    this.addEventListener('pointerover', this._hovered);
    this._connection.open();
  }

  // --- incoming messages ---

  private _linkChanged(link: Link): void {
    this._link = link;
    if (link.state === 'open') {
      this._sentBounds = '';
      if (this._inspected !== undefined) this._connection.ask({ type: 'inspect', node: this._inspected });
    }
  }

  private _received(message: ServerMessage): void {
    const outcome = this._state.take(message);
    if (outcome.gap) this._connection.ask({ type: 'resync' });
    if (outcome.refused !== undefined && !this._isUnasked(message)) this._notify('refused', outcome.refused);
    if (outcome.event) this._happened(outcome.event);
    if (outcome.treeChanged) this._contextChanged();
    this.requestUpdate();
  }

  /** Refused scrolls and bounds are not shown: the user did not request them, and the page may be gone. */
  private _isUnasked(message: ServerMessage): boolean {
    const action = message.type === 'refused' ? this._connection.unanswered(message.ack) : undefined;
    return action?.action === 'scroll' || action?.action === 'bounds';
  }

  private _contextChanged(): void {
    const { tree } = this._state;
    if (!tree) return;
    document.title = ['Settings', tree.application?.bundle].filter(Boolean).join(' – ');
    this._context = {
      tree,
      act: (action) => this._act(action),
      say: (text) => this._say(text),
      inspect: (row) => this._inspect(row),
      inspected: this._inspected,
      transition: this._transition,
    };
    this._transition = undefined;
  }

  private _happened(event: EventMessage): void {
    if (event.event === 'announce') this._say(event.text ?? '');
    if (event.event === 'transition') this._transition = { kind: event.kind ?? 'push', duration: event.duration ?? 0 };
    if (event.event === 'openURL') this._offerAddress(event.url);
    if (event.event !== 'homeScreenRestarted') return;
    this._restarts += 1;
    this._notify('restarted', 'The home screen restarted and reread the preference file.');
  }

  // A repeated text gets an inaudible suffix, because a live region announces only changes.
  private _say(text: string): void {
    this._spoken = text === this._spoken ? `${text}\u00a0` : text;
  }

  private _notify(kind: NoticeKind, text: string): void {
    const id = this._addNotice({ kind, text });
    setTimeout(() => this._dismiss(id), noticeMs);
  }

  // The notice stays until the user follows or dismisses it; the page never opens a link by itself.
  private _offerAddress(url: string | undefined): void {
    const address = webAddress(url);
    if (address === undefined) this._notify('refused', `Not a web address: ${url ?? ''}`);
    else this._addNotice({ kind: 'address', text: 'The device would open this page:', address });
  }

  private _addNotice(notice: Omit<Notice, 'id'>): number {
    const id = ++this._noticeCount;
    const others = this._notices.filter(({ text, address }) => text !== notice.text || address !== notice.address);
    this._notices = [...others, { id, ...notice }];
    return id;
  }

  private _dismiss(id: number): void {
    this._notices = this._notices.filter((notice) => notice.id !== id);
  }

  // --- outgoing actions ---

  private async _act(action: Action): Promise<void> {
    const answered = this._connection.send(action);
    if (answered) await answered;
    else if (action.action !== 'scroll' && action.action !== 'bounds') this._notify('refused', 'No connection: the action was not sent.');
    // Controls that waited for the answer now show the tree's state.
    this.requestUpdate();
    await this.updateComplete;
  }

  /** Resolves after the pages are rendered, too. */
  protected override async getUpdateComplete(): Promise<boolean> {
    const complete = await super.getUpdateComplete();
    await this.querySelector<LightElement>('zv-navigation')?.updateComplete;
    return complete;
  }

  private _inspect(row: string): void {
    if (row === this._inspected) return;
    this._inspected = row;
    this._connection.ask({ type: 'inspect', node: row });
    this._contextChanged();
    this.requestUpdate();
  }

  private readonly _pointedAt = (event: Event): void => {
    const row = rowOf(event.target);
    if (row !== undefined) this._inspect(row);
  };

  private readonly _hovered = (event: PointerEvent): void => {
    clearTimeout(this._hover);
    const row = event.pointerType === 'mouse' ? rowOf(event.target) : undefined;
    if (row !== undefined) this._hover = window.setTimeout(() => this._inspect(row), hoverMs);
  };

  private readonly _key = (event: KeyboardEvent): void => {
    const typing = event.target instanceof HTMLInputElement && event.target.type !== 'range';
    if (event.defaultPrevented || typing || event.ctrlKey || event.metaKey || event.altKey) return;
    if (event.key === 'Escape' && (event.target as Element).closest?.('.stage') && !this.querySelector('zv-modal')) {
      this.querySelector<HTMLButtonElement>('.bar .back')?.click();
    }
    if (event.key === 'i' && rowOf(event.target) !== undefined) this._showRowPane(event);
  };

  private _showRowPane(event: KeyboardEvent): void {
    event.preventDefault();
    this._tab = 'row';
    void this.updateComplete.then(() => this.querySelector<HTMLElement>('[data-pane="row"]')?.focus());
  }

  // --- rendering ---

  private readonly _resized = (): void => this.requestUpdate();

  protected override render(): TemplateResult {
    const context = this._context;
    return html`
      ${linkBanner(this._link, this._state.tree?.application?.program, () => this._connection.open())}
      ${context ? this._layout(context) : html`<p class="opening" role="status">${this._link.state === 'lost' ? '' : 'Opening Settings…'}</p>`}
      <div class="visually-hidden" role="status" aria-live="polite" data-live>${this._spoken}</div>`;
  }

  private _layout(context: Context): TemplateResult {
    const shape = shapeOf(context.tree.device);
    const arrangement = arrange(shape, innerWidth, innerHeight);
    const bare = arrangement.kind === 'bare';
    const state: PaneState = { context, sides: this._state.sides, restarts: this._restarts };
    return html`<div class="layout layout-${arrangement.kind}" data-appearance=${context.tree.device.appearance ?? 'light'}>
      <div class="stage" id="panel-phone" role=${bare ? 'tabpanel' : nothing} aria-labelledby=${bare ? 'tab-phone' : nothing}
        ?hidden=${bare && this._tab !== 'phone'}>
        ${bare ? bareScreen(context) : framedScreen(context, shape, arrangement.scale)}
        ${noticeList(this._notices, (id) => this._dismiss(id))}
      </div>
      ${this._panes(state, arrangement)}
    </div>`;
  }

  private _panes(state: PaneState, arrangement: Arrangement): TemplateResult {
    if (arrangement.kind === 'grid') return html`<aside class="beside" aria-label="Beside the phone">${paneGrid(state)}</aside>`;
    const bare = arrangement.kind === 'bare';
    const shown = !bare && this._tab === 'phone' ? 'file' : this._tab;
    return html`<aside class="beside" aria-label="Beside the phone">${paneTabs(state, shown, bare, (tab) => (this._tab = tab))}</aside>`;
  }

  protected override updated(changed: PropertyValues): void {
    super.updated(changed);
    const context = this._context;
    if (!context) return;
    document.documentElement.dataset['appearance'] = context.tree.device.appearance ?? 'light';
    const log = this.querySelector('.pane-log .pane-body');
    if (log && this._state.sides.log.length !== this._shownLog) log.scrollTop = log.scrollHeight;
    this._shownLog = this._state.sides.log.length;
    this._sendBounds(context);
  }

  /** Sends the size that can be shown, if it is not the whole screen of the device. */
  private _sendBounds(context: Context): void {
    const shape = shapeOf(context.tree.device);
    const bare = arrange(shape, innerWidth, innerHeight).kind === 'bare';
    const [width, height] = bare ? [innerWidth, innerHeight - tabBarHeight] : [shape.width, shape.height];
    const bounds = `${width}x${height}`;
    const nothingSaid = this._sentBounds === '' && !bare;
    if (bounds === this._sentBounds || this._link.state !== 'open') return;
    this._sentBounds = bounds;
    if (!nothingSaid) void this._connection.send({ action: 'bounds', width, height });
  }
}

function rowOf(target: EventTarget | null): string | undefined {
  const row = target instanceof Element ? target.closest<HTMLElement>('.row') : null;
  return row?.dataset['node'];
}

customElements.define('zv-app', ZvApp);
