// The view tree as the server sends it (docs/tree.md). A member that has its default value is
// absent, so every optional one is read through a default where it is shown.

export type Color = { name: string } | { rgba: [number, number, number, number] };

export type Picture = { hash: string; width: number; height: number; scale: number } | { symbol: string };

export interface Text {
  string: string;
  color?: Color;
  highlightedColor?: Color;
  lines?: number;
  size?: number;
  weight?: string;
  alpha?: number;
}

export interface Layer {
  radius?: number;
  borderWidth?: number;
  borderColor?: Color;
  mask?: Picture;
}

export interface Animation {
  id: number;
  duration: number;
  kind: string;
}

export interface Common {
  kind: string;
  children: string[];
  class?: string;
  /** What a view is to its cell or table. */
  role?: string;
  frame?: [number, number, number, number];
  alpha?: number;
  hidden?: boolean;
  interactive?: boolean;
  background?: Color;
  tint?: Color;
  layer?: Layer;
  label?: string;
  animation?: Animation;
}

export interface WindowNode extends Common { kind: 'window' }
export interface Bar {
  title?: string;
  titleOpacity?: number;
  largeTitle?: boolean;
  back?: string;
  hidden?: boolean;
}
export interface NavigationNode extends Common { kind: 'navigation'; bar: Bar }
export interface PageNode extends Common {
  kind: 'page';
  title: string;
  largeTitle: boolean;
  problem?: { title: string; text: string };
}
export interface TableNode extends Common {
  kind: 'table';
  style: 'plain' | 'grouped' | 'insetGrouped';
  editing: boolean;
  /** A long press on a row may do something. */
  pressable?: boolean;
  offset: number;
  contentHeight: number;
}
export interface SectionNode extends Common {
  kind: 'section';
  index: number;
  header?: string;
  footer?: string;
  identifier?: string;
  problem?: string;
  /** Where its first row begins in the table's content. */
  rowsTop?: number;
}
export interface RowNode extends Common {
  kind: 'row';
  section: number;
  index: number;
  height: number;
  title: string;
  visible: boolean;
  selectable: boolean;
  problem?: string;
  identifier?: string;
  editing?: { style?: 'none' | 'delete' | 'insert'; movable?: boolean };
}
export interface CellNode extends Common {
  kind: 'cell';
  style: 'default' | 'value1' | 'value2' | 'subtitle';
  text?: Text;
  detail?: Text;
  image?: Picture;
  accessory: 'none' | 'checkmark' | 'disclosure' | 'detail';
  selected?: boolean;
  enabled?: boolean;
  cellType?: string;
}
export interface SwitchNode extends Common { kind: 'switch'; on: boolean; enabled: boolean }
export interface SegmentedNode extends Common {
  kind: 'segmented';
  segments: string[];
  selected: number;
  enabled: boolean;
}
export interface SliderNode extends Common {
  kind: 'slider';
  value: number;
  min: number;
  max: number;
  continuous: boolean;
  showValue: boolean;
  segmentCount: number;
  enabled: boolean;
}
export interface TextFieldNode extends Common {
  kind: 'textField';
  string: string;
  placeholder: string;
  secure: boolean;
  keyboard: 'default' | 'number' | 'decimal' | 'url' | 'email';
  editing: boolean;
  enabled: boolean;
}
export interface ButtonNode extends Common { kind: 'button'; string: string; enabled: boolean }
export interface LabelNode extends Common {
  kind: 'label';
  string: string;
  color: Color;
  size: number;
  weight: string;
  lines: number;
  alignment: 'natural' | 'left' | 'center' | 'right';
}
export interface ImageNode extends Common {
  kind: 'image';
  image?: Picture;
  contentMode: 'scaleToFill' | 'scaleAspectFit' | 'scaleAspectFill' | 'center';
}
export interface ActivityNode extends Common { kind: 'activity'; animating: boolean }
export interface ViewNode extends Common { kind: 'view' }
export interface AlertAction { title: string; style?: 'default' | 'cancel' | 'destructive' }
export interface AlertNode extends Common {
  kind: 'alert';
  style: 'alert' | 'sheet';
  title: string;
  message: string;
  actions: AlertAction[];
}
export interface ColorPickerNode extends Omit<Common, 'alpha'> {
  kind: 'colorPicker';
  title?: string;
  color: Color;
  /** The alpha control is offered. */
  alpha: boolean;
}
export interface ImagePickerNode extends Common {
  kind: 'imagePicker';
  busy: boolean;
  photos: { name: string; image?: Picture; problem?: string }[];
}
export interface CrashNode extends Common { kind: 'crash'; name: string; reason: string; where: string }
export interface WaitingNode extends Common { kind: 'waiting'; program: string }

export type TreeNode =
  | WindowNode | NavigationNode | PageNode | TableNode | SectionNode | RowNode | CellNode | SwitchNode
  | SegmentedNode | SliderNode | TextFieldNode | ButtonNode | LabelNode | ImageNode | ActivityNode
  | ViewNode | AlertNode | ColorPickerNode | ImagePickerNode | CrashNode | WaitingNode;

export type Kind = TreeNode['kind'];

export interface Device {
  idiom?: 'phone' | 'pad';
  system?: string;
  screen?: { width: number; height: number; scale: number };
  appearance?: 'light' | 'dark';
  textScale?: number;
  tint?: string;
  /** Classes that pages find by name, and whether they will be there at the next opening. */
  neighbours?: Record<string, boolean>;
}

/** A trait of the device as people set it, with the values that are offered; none for a colour. */
export interface Trait {
  name: string;
  label: string;
  value: string;
  choices: [value: string, title: string][];
}

export interface Tree {
  revision: number;
  root: string;
  nodes: Record<string, TreeNode>;
  device: Device;
  traits?: Trait[];
  /** The program that serves the page, and the title of the bundle that it shows. */
  application?: { program: string; bundle: string };
}

/** The node of this name and kind, or nothing where the tree has no such node. */
export function nodeOf<K extends Kind>(tree: Tree, id: string, kind: K): Extract<TreeNode, { kind: K }> | undefined {
  const node = tree.nodes[id];
  return node?.kind === kind ? (node as Extract<TreeNode, { kind: K }>) : undefined;
}

/** The names of the children of a node that are of one kind, in their order. */
export function childrenOf(tree: Tree, id: string, kind: Kind): string[] {
  return (tree.nodes[id]?.children ?? []).filter((child) => tree.nodes[child]?.kind === kind);
}

/** The first node of a kind at or below a node, in display order. */
export function firstBelow(tree: Tree, id: string, kind: Kind): string | undefined {
  const node = tree.nodes[id];
  if (!node) return undefined;
  if (node.kind === kind) return id;
  for (const child of node.children) {
    const found = firstBelow(tree, child, kind);
    if (found !== undefined) return found;
  }
  return undefined;
}
