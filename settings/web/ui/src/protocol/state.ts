// The page's state: the tree, the panes, and the last announcement. Only messages of the server change
// it; user actions do not change it directly.

import type { EventMessage, LogEntry, Panes, ServerMessage, SideMessage } from './messages.js';
import { applyPatch, PatchError } from './patch.js';
import type { Tree } from './tree.js';

const logLimit = 2000;

/** The panes' content, each part as last received. */
export interface Sides extends Panes {
  /** Counts the received files, so that a change that comes twice is highlighted twice. */
  fileCount: number;
  log: LogEntry[];
}

export interface Outcome {
  refused?: string;
  event?: EventMessage;
  /** The message does not follow the current revision: request the whole tree. */
  gap?: boolean;
  treeChanged?: boolean;
}

export class PageState {
  tree: Tree | undefined;
  revision = 0;
  sides: Sides = { fileCount: 0, log: [] };
  private _resyncing = false;

  /** Applies one message and returns what follows from it. */
  take(message: ServerMessage): Outcome {
    switch (message.type) {
      case 'tree':
        this.tree = message.tree;
        this.revision = message.revision;
        this._resyncing = false;
        return { treeChanged: true };
      case 'patch': return this._takePatch(message.patch, message.base, message.revision);
      case 'event': return { event: message };
      case 'side':
        this._takeSide(message);
        return {};
      case 'refused': return { refused: message.message };
      default: return {};
    }
  }

  private _takePatch(patch: Parameters<typeof applyPatch>[1], base: number, revision: number): Outcome {
    if (this._resyncing) return {};
    if (!this.tree || base !== this.revision) return this._gap();
    try {
      this.tree = applyPatch(this.tree, patch);
    } catch (error) {
      if (error instanceof PatchError) return this._gap();
      throw error;
    }
    this.revision = revision;
    return { treeChanged: true };
  }

  private _gap(): Outcome {
    this._resyncing = true;
    return { gap: true };
  }

  private _takeSide({ type, log, logFromStart, ...panes }: SideMessage): void {
    const { sides } = this;
    const added = [...(logFromStart ? [] : sides.log), ...(log ?? [])].slice(-logLimit);
    this.sides = { ...sides, ...panes, fileCount: sides.fileCount + (panes.file ? 1 : 0), log: log ? added : sides.log };
  }
}
