import type { Operation } from './patch.js';
import type { Tree } from './tree.js';

export interface FileChange { key: string; before?: unknown; after?: unknown }
export interface FileState {
  path?: string;
  state: 'ok' | 'missing' | 'problem';
  problem?: string;
  entries?: Record<string, unknown>;
  changed?: FileChange[];
}
export interface LogEntry { time: number | string; source?: string; message: string }
export interface ProgramRecord {
  path: string;
  arguments?: string[];
  environment?: string[] | null;
  exit?: number | string | null;
  /** Why it could not be started. */
  error?: string;
}
export interface RowInfo {
  node: string;
  identifier?: string | null;
  name?: string | null;
  cellType?: string | null;
  getter?: string | null;
  setter?: string | null;
  action?: string | null;
  detail?: string | null;
  /** The current result of the getter. */
  value?: unknown;
  problem?: string;
  properties?: Record<string, unknown>;
}

export interface TreeMessage { type: 'tree'; revision: number; tree: Tree; ack?: number }
export interface PatchMessage { type: 'patch'; revision: number; base: number; patch: Operation[]; ack?: number }
export interface EventMessage {
  type: 'event';
  event: 'announce' | 'homeScreenRestarted' | 'transition' | 'openURL' | string;
  text?: string;
  url?: string;
  kind?: string;
  duration?: number;
}
export interface SideMessage {
  type: 'side';
  file?: FileState;
  log?: LogEntry[];
  /** True if the message has the whole log, not only new entries. */
  logFromStart?: boolean;
  programs?: ProgramRecord[];
  row?: RowInfo;
}
export interface RefusedMessage { type: 'refused'; ack?: number; message: string }

export type ServerMessage = TreeMessage | PatchMessage | EventMessage | SideMessage | RefusedMessage;

export type ActionName =
  | 'tap' | 'toggle' | 'segment' | 'slide' | 'edit' | 'scroll' | 'press' | 'back' | 'commit' | 'move'
  | 'stop'
  | 'choose' | 'pick' | 'photo' | 'close' | 'continue' | 'restart' | 'bounds' | 'trait' | 'reopen';

export interface Action {
  action: ActionName;
  node?: string;
  [member: string]: unknown;
}

/** A number of a property list in its original spelling, so 1.0 stays a real and 2^63 stays exact. */
export class NumberText {
  constructor(readonly source: string) {}
}

/**
  * Parses a message of the server; undefined if the text is not a message. In the panes' messages the
  * numbers of property lists keep their spelling if the browser supports it.
 */
export function parseMessage(text: string): ServerMessage | undefined {
  try {
    const message = JSON.parse(text) as ServerMessage;
    if (message.type === 'side' && (message.file || message.row)) return withNumberTexts(text, message);
    return typeof message.type === 'string' ? message : undefined;
  } catch {
    return undefined;
  }
}

function withNumberTexts(text: string, message: SideMessage): SideMessage {
  const reviver = (_key: string, value: unknown, context?: { source?: string }): unknown =>
    typeof value === 'number' ? new NumberText(context?.source ?? String(value)) : value;
  const spelled = JSON.parse(text, reviver as (key: string, value: unknown) => unknown) as SideMessage;
  const result: SideMessage = { ...message };
  if (spelled.file) result.file = spelled.file;
  if (spelled.row) result.row = spelled.row;
  return result;
}
