// What every component is given: the tree as it is, and a way to say what the user did.

import type { Action } from '../protocol/messages.js';
import type { Tree } from '../protocol/tree.js';

export interface Context {
  tree: Tree;
  /** Sends an action; ends when what it has changed is shown. Says aloud why it cannot be sent. */
  act(action: Action): Promise<void>;
  /** Says something to a screen reader. */
  say(text: string): void;
  /** Shows the specifier behind a row in its pane. */
  inspect(row: string): void;
  /** The row whose specifier is shown. */
  inspected: string | undefined;
  /** The transition that the server told of last, until it has been used. */
  transition: { kind: string; duration: number } | undefined;
}

export function isDark(context: Context): boolean {
  return context.tree.device.appearance === 'dark';
}
