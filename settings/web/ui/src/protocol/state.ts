// What the page knows: the tree, the panes, and what has just been said. It changes only by what the
// server sends; nothing that the user does changes it by itself.

import type { EventMessage, LogEntry, Panes, ServerMessage, SideMessage } from './messages.js';
import { applyPatch, PatchError } from './patch.js';
import type { Tree } from './tree.js';

const logLimit = 2000;

/** What the panes show, each as it came last. */
export interface Sides extends Panes {
  /** Counts the files that came, so that a change that comes twice is lit up twice. */
  fileCount: number;
  log: LogEntry[];
}

export interface Outcome {
  refused?: string;
  event?: EventMessage;
  /** The message does not follow on what is here: the whole tree must be asked for. */
  gap?: boolean;
  treeChanged?: boolean;
}

export class PageState {
  tree: Tree | undefined;
  revision = 0;
  sides: Sides = { fileCount: 0, log: [] };
  private _resyncing = false;

  /** Takes one message in and says what follows from it. */
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
