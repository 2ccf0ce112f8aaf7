// The WebSocket to the server: connects, reconnects with growing pauses, numbers the actions, and
// keeps those that were not answered. An action that only names its result ("this switch on") is
// sent again after a break; one that depends on the moment (a tap) is not.

import { parseMessage, type Action, type ServerMessage } from './messages.js';

export type Link =
  | { state: 'connecting' }
  | { state: 'open' }
  | { state: 'lost'; attempts: number; retryAt: number };

export interface ConnectionEvents {
  linkChanged(link: Link): void;
  received(message: ServerMessage): void;
}

const firstPauseMs = 250;
const longestPauseMs = 8000;
const repeatable: readonly string[] = ['toggle', 'segment', 'slide', 'edit', 'trait', 'pick'];

interface Waiting {
  action: Action;
  resolve: () => void;
}

export class Connection {
  private _socket: WebSocket | undefined;
  private _link: Link = { state: 'connecting' };
  private _attempts = 0;
  private _timer: number | undefined;
  private _sequence = 0;
  private readonly _waiting = new Map<number, Waiting>();

  constructor(private readonly _address: string, private readonly _events: ConnectionEvents) {}

  get link(): Link {
    return this._link;
  }

  /** Opens the connection, or tries at once where a pause is running. */
  open(): void {
    clearTimeout(this._timer);
    if (this._socket && this._socket.readyState <= WebSocket.OPEN) return;
    const socket = new WebSocket(this._address);
    this._socket = socket;
    socket.onopen = () => this._opened();
    socket.onmessage = (event) => this._message(event.data);
    socket.onclose = () => {
      if (socket === this._socket) this._closed();
    };
  }

  /**
   * Sends an action. The promise ends when the server has answered it, or when the connection broke
   * and the action is one that is not sent again. Without a connection only repeatable actions are
   * taken; others give nothing.
   */
  send(action: Action): Promise<void> | undefined {
    const open = this._link.state === 'open';
    if (!open && !isRepeatable(action)) return undefined;
    const sequence = ++this._sequence;
    if (open) this._transmit({ type: 'action', sequence, ...action });
    return new Promise((resolve) => this._waiting.set(sequence, { action, resolve }));
  }

  /** The action of that number, where it has not been answered yet. */
  unanswered(sequence: number | undefined): Action | undefined {
    return sequence === undefined ? undefined : this._waiting.get(sequence)?.action;
  }

  /** Asks for what is no action; lost where there is no connection. */
  ask(request: { type: 'inspect'; node: string } | { type: 'resync' }): void {
    if (this._link.state === 'open') this._transmit(request);
  }

  private _transmit(message: object): void {
    this._socket?.send(JSON.stringify(message));
  }

  private _opened(): void {
    this._attempts = 0;
    this._setLink({ state: 'open' });
    for (const [sequence, { action }] of this._waiting) this._transmit({ type: 'action', sequence, ...action });
  }

  private _message(data: unknown): void {
    const message = typeof data === 'string' ? parseMessage(data) : undefined;
    if (!message) return;
    this._events.received(message);
    if (message.type === 'tree') this._answeredUpTo(message.ack);
    else if ((message.type === 'patch' || message.type === 'refused') && message.ack !== undefined) this._answered(message.ack);
  }

  // The whole tree takes the place of every patch that did not come, and so of what they answered.
  private _answeredUpTo(last: number | undefined): void {
    if (last === undefined) return;
    for (const sequence of [...this._waiting.keys()]) {
      if (sequence <= last) this._answered(sequence);
    }
  }

  private _answered(sequence: number): void {
    this._waiting.get(sequence)?.resolve();
    this._waiting.delete(sequence);
  }

  private _closed(): void {
    for (const [sequence, { action }] of this._waiting) {
      if (!isRepeatable(action)) this._answered(sequence);
    }
    const pause = Math.min(firstPauseMs * 2 ** this._attempts, longestPauseMs);
    this._attempts += 1;
    this._setLink({ state: 'lost', attempts: this._attempts, retryAt: Date.now() + pause });
    this._timer = window.setTimeout(() => this.open(), pause);
  }

  private _setLink(link: Link): void {
    this._link = link;
    this._events.linkChanged(link);
  }
}

function isRepeatable(action: Action): boolean {
  return repeatable.includes(action.action) && !('phase' in action && action.phase === 'move');
}
