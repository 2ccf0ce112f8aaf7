import type { PropertyDeclarations } from 'lit';
import type { TreeNode } from '../protocol/tree.js';
import type { Context } from './context.js';
import { LightElement } from './light-element.js';

/** A component that takes input for a node of the tree, inside a row or alone. */
export class ControlElement<Node extends TreeNode> extends LightElement {
  static override properties: PropertyDeclarations = {
    context: { attribute: false },
    node: { attribute: false },
    nodeId: { attribute: false },
    name: { attribute: false },
    disabled: { attribute: false },
  };

  declare context: Context;
  declare node: Node;
  declare nodeId: string;
  /** The control's accessible name. */
  declare name: string;
  declare disabled: boolean;
}
