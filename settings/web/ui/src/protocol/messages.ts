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
  /** What the getter gives now. */
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
/** The panes beside the phone that come as a whole. */
export interface Panes {
  file?: FileState;
  programs?: ProgramRecord[];
  row?: RowInfo;
}
export interface SideMessage extends Panes {
  type: 'side';
  log?: LogEntry[];
  /** The log is the whole one, not what is new. */
  logFromStart?: boolean;
}
export interface RefusedMessage { type: 'refused'; ack?: number; message: string }

export type ServerMessage = TreeMessage | PatchMessage | EventMessage | SideMessage | RefusedMessage;

/** What each action has beside its name (docs/tree.md). */
export interface ActionMembers {
  back: { node: string };
  scroll: { node: string; offset: number; overscan?: number };
  tap: { node: string };
  press: { node: string; phase: 'begin' | 'end' | 'cancel' };
  commit: { node: string };
  move: { node: string; section: number; index: number };
  toggle: { node: string; on: boolean };
  segment: { node: string; index: number };
  slide: { node: string; value: number; phase: 'move' | 'end' };
  edit: { node: string; phase: 'begin' | 'change' | 'end' | 'cancel'; string?: string };
  choose: { node: string; index: number };
  close: { node: string };
  pick: { node: string; rgba: [number, number, number, number] };
  photo: { node: string; name: string };
  continue: { node: string };
  restart: { node: string };
  stop: { node: string };
  bounds: { width: number; height: number };
  trait: { name: string; value: string };
  reopen: object;
}

export type Action = { [Name in keyof ActionMembers]: { action: Name } & ActionMembers[Name] }[keyof ActionMembers];

/** A number of a property list as it was written, so that 1.0 stays a real and 2^63 stays exact. */
export class NumberText {
  constructor(readonly source: string) {}
}

/**
 * A message of the server, or nothing where the text is none. In the panes' messages the numbers of
 * property lists keep their spelling where the browser can tell it.
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
