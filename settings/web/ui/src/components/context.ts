// What every component receives: the current tree, and a way to report what the user did.

import type { Action } from '../protocol/messages.js';
import type { Tree } from '../protocol/tree.js';

export interface Context {
  tree: Tree;
  /** Sends an action. Resolves when its changes are shown. Announces why if it cannot be sent. */
  act(action: Action): Promise<void>;
  /** Announces a text to screen readers. */
  say(text: string): void;
  /** Shows the specifier behind a row in its pane. */
  inspect(row: string): void;
  /** The row whose specifier is shown in the pane. */
  inspected: string | undefined;
  /** The last transition that the server reported, until it has been used. */
  transition: { kind: string; duration: number } | undefined;
}

export function isDark(context: Context): boolean {
  return context.tree.device.appearance === 'dark';
}
