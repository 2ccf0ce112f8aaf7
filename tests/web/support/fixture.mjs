// Builds trees as the server sends them (docs/tree.md), for tests of the page alone. The types of the
// page's protocol are checked here too (tests/web/tsconfig.json).

/** @typedef {import('../../../settings/web/ui/src/protocol/tree.js').TreeNode} TreeNode */
/**
 * The members that the server always sends of a kind.
 * @template {TreeNode} Node
 * @typedef {{ [Name in keyof Node as {} extends Pick<Node, Name> ? never : Name extends 'kind' | 'children' ? never : Name]: Node[Name] }} Always
 */
/** @template {TreeNode} Node @typedef {Node extends TreeNode ? Omit<Node, 'children' | keyof Always<Node>> & Partial<Always<Node>> : never} Given */

/** @type {{ [K in TreeNode['kind']]: Always<Extract<TreeNode, { kind: K }>> }} */
const standard = {
  window: {},
  navigation: { bar: { title: '', titleOpacity: 1, largeTitle: false, hidden: false } },
  page: { title: '', largeTitle: false },
  table: { style: 'insetGrouped', editing: false, offset: 0, contentHeight: 844 },
  section: { index: 0 },
  row: { section: 0, index: 0, height: 44, title: '', visible: true, selectable: false },
  cell: { style: 'default', accessory: 'none' },
  switch: { on: false, enabled: true },
  segmented: { segments: [], selected: -1, enabled: true },
  slider: { value: 0, min: 0, max: 1, continuous: false, showValue: false, segmentCount: 0, enabled: true },
  textField: { string: '', placeholder: '', secure: false, keyboard: 'default', editing: false, enabled: true },
  button: { string: '', enabled: true },
  label: { string: '', color: { name: 'labelColor' }, size: 17, weight: 'regular', lines: 1, alignment: 'natural' },
  image: { contentMode: 'scaleToFill' },
  activity: { animating: false },
  view: {},
  alert: { style: 'alert', title: '', message: '', actions: [] },
  colorPicker: { color: { rgba: [0, 0, 0, 1] }, alpha: false },
  imagePicker: { busy: false, photos: [] },
  crash: { name: '', reason: '', where: '' },
  waiting: { program: '' },
};

const trait = (name, label, value, ...choices) => ({ name, label, value, choices });
const traits = [
  trait('idiom', 'Device', 'phone', ['phone', 'Phone'], ['pad', 'Tablet']),
  trait('screen', 'Screen', '390x844@3', ['390x844@3', 'Phone'], ['820x1180@2', 'Tablet']),
  trait('system', 'System', '15.4', ['14.0', '14.0'], ['15.4', '15.4']),
  trait('appearance', 'Appearance', 'light', ['light', 'Light'], ['dark', 'Dark']),
  trait('text', 'Text size', '1', ['1', 'Standard'], ['1.24', 'Large']),
  trait('tint', 'Tint', '007AFFFF'),
];

/** @typedef {import('../../../settings/web/ui/src/protocol/tree.js').Color} Color */

/** @type {Color} */
const label = { name: 'labelColor' };
const secondary = { name: 'secondaryLabelColor' };

export class TreeBuilder {
  constructor(device = {}) {
    this.nodes = {};
    this.count = 0;
    this.device = {
      idiom: 'phone', system: '15.4', screen: { width: 390, height: 844, scale: 3 },
      appearance: 'light', textScale: 1, tint: '007AFFFF', ...device,
    };
  }

  /**
   * Adds a node; what the server always sends of its kind is filled in where it is not given.
   * @param {Given<TreeNode>} node
   * @param {string[]} children
   */
  add(node, children = []) {
    const id = String(++this.count);
    this.nodes[id] = { ...standard[node.kind], ...node, children };
    return id;
  }

  cell(members, content = [], accessoryView) {
    const children = [this.add({ kind: 'view', role: 'content' }, content)];
    if (accessoryView) children.push(accessoryView);
    return this.add({ kind: 'cell', class: 'PSTableCell', ...members }, children);
  }

  row(identifier, title, cell, members = {}) {
    return this.add({ kind: 'row', identifier, title, height: 44, visible: true, ...members }, cell ? [cell] : []);
  }

  /** @returns {import('../../../settings/web/ui/src/protocol/tree.js').Text} */
  text(string, color = label) {
    return { string, color, lines: 1, size: 17, weight: 'regular' };
  }

  switchRow(identifier, title, on, members = {}) {
    const control = this.add({ kind: 'switch', role: 'accessoryView', on, ...members });
    return this.row(identifier, title, this.cell({ cellType: 'PSSwitchCell', text: this.text(title) }, [], control));
  }

  segmentRow(identifier, title, segments, selected) {
    const control = this.add({ kind: 'segmented', segments, selected });
    return this.row(identifier, title, this.cell({ cellType: 'PSSegmentCell' }, [control]));
  }

  sliderRow(identifier, title, members) {
    const control = this.add({ kind: 'slider', value: 0.5, min: 0, max: 1, continuous: false, ...members });
    return this.row(identifier, title, this.cell({ cellType: 'PSSliderCell' }, [control]));
  }

  fieldRow(identifier, title, members) {
    const control = this.add({ kind: 'textField', string: '', ...members });
    return this.row(identifier, title, this.cell({ cellType: 'PSEditTextCell', text: this.text(title) }, [control]));
  }

  buttonRow(identifier, title, members = {}) {
    const text = this.text(title, { rgba: [0, 122 / 255, 1, 1] });
    return this.row(identifier, title, this.cell({ cellType: 'PSButtonCell', text, ...members }), { selectable: members.enabled !== false });
  }

  valueRow(identifier, title, value, members = {}) {
    const cell = { cellType: 'PSTitleValueCell', style: 'value1', text: this.text(title), detail: this.text(value, secondary), ...members };
    return this.row(identifier, title, this.cell(cell), { selectable: members.accessory === 'disclosure' });
  }

  staticRow(identifier, title, height = 64) {
    const cell = this.cell({ cellType: 'PSStaticTextCell', text: { ...this.text(title), lines: 0 } });
    return this.row(identifier, title, cell, { height });
  }

  /** A row that stands for a web link: `tile` is laid over its picture, with `over` in it. */
  linkRow(identifier, title, { subtitle, size = 29, layer, initials, avatar, lines = 1, tint = [0, 122 / 255, 1, 1] }) {
    /** @type {[number, number, number, number]} */
    const bounds = [0, 0, size, size];
    const over = initials === undefined
      ? this.add({ kind: 'image', frame: bounds, contentMode: 'scaleToFill', alpha: avatar ? 1 : 0, ...(avatar && { image: avatar }) })
      : this.add({ kind: 'label', frame: bounds, string: initials, color: { rgba: [1, 1, 1, 1] }, size: 13, alignment: 'center' });
    const level = initials === undefined ? 0.9 : 0.7;
    const tile = this.add({ kind: 'view', frame: bounds, background: { rgba: [level, level, level, 1] }, interactive: false, ...(layer && { layer }) }, [over]);
    const placeholder = { hash: '0'.repeat(64), width: size, height: size, scale: 3 };
    const view = this.add({ kind: 'image', role: 'imageView', frame: [16, 0, size, size], image: placeholder }, [tile]);
    const accessory = this.add({ kind: 'image', role: 'accessoryView', frame: [0, 0, 22, 22], image: { symbol: 'safari' }, tint: { name: 'systemGray3Color' } });
    const color = /** @type {Color} */ ({ rgba: tint });
    const text = { ...this.text(title, color), highlightedColor: color };
    const detail = { ...this.text(subtitle ?? '', secondary), lines, size: 12 };
    const cell = this.cell({ class: 'HBLinkTableCell', cellType: 'PSButtonCell', style: 'subtitle', text, detail, image: placeholder }, [view], accessory);
    return this.row(identifier, title, cell, { selectable: true, height: 60 });
  }

  section(header, footer, rows) {
    return this.add({ kind: 'section', ...(header && { header }), ...(footer && { footer }) }, rows);
  }

  /** How high sections are in a table, with their headers and footers. */
  heightOf(sections) {
    const heights = sections.flatMap((section) => this.nodes[section].children.map((row) => this.nodes[row].height));
    return heights.reduce((sum, height) => sum + height, sections.length * 70);
  }

  page(title, sections, bar = {}) {
    const table = this.add({ kind: 'table', frame: [0, 0, 390, 844], contentHeight: this.heightOf(sections) }, sections);
    const page = this.add({ kind: 'page', title }, [table]);
    return { page, table, bar: { title, titleOpacity: 1, largeTitle: false, ...bar } };
  }

  tree({ page, bar }, presented = []) {
    const navigation = this.add({ kind: 'navigation', bar }, [page]);
    const root = this.add({ kind: 'window' }, [navigation, ...presented]);
    return { revision: 1, root, nodes: this.nodes, device: this.device, traits };
  }
}

/** A page with a row of every kind. `ids` names what tests reach for. */
export function everyKind(device, bar) {
  const b = new TreeBuilder(device);
  const rows = {
    enabled: b.switchRow('enabled', 'Enabled', true),
    respring: b.buttonRow('respring', 'Respring'),
    text: b.staticRow('presentationText', 'Full Screen covers the display. Compact opens a panel at the edge you swipe from.'),
    style: b.segmentRow('presentationStyle', 'Presentation style', ['Full Screen', 'Compact'], 0),
    expanded: b.switchRow('presentFullyExpanded', 'Present fully expanded', false),
    blur: b.sliderRow('backgroundBlur', 'Background blur', { value: 0.75, showValue: true }),
    corner: b.sliderRow('cornerRadius', 'Module corners', { value: 16, min: 0, max: 32, segmentCount: 8, showValue: true }),
    material: b.valueRow('moduleMaterial', 'Module material', 'Regular', { accessory: 'disclosure' }),
    version: b.valueRow('version', 'Version', '1.0.0'),
    arrange: b.buttonRow('arrangeModules', 'Arrange Modules', { enabled: false }),
    name: b.fieldRow('name', 'Name', { placeholder: 'Control Center' }),
    passcode: b.fieldRow('passcode', 'Passcode', { secure: true, keyboard: 'number', string: '1234' }),
  };
  const sections = {
    general: b.section(undefined, 'Respring restarts the home screen, so that Control Center picks up your changes.', [rows.enabled, rows.respring]),
    presentation: b.section('Presentation', 'Reverse module order: When presented from the top, reverse the module order configuration.', [rows.text, rows.style, rows.expanded]),
    look: b.section('Background Blur', undefined, [rows.blur, rows.corner, rows.material]),
    access: b.section('Access', 'It is kept as plain text in the settings file; leave it empty for none.', [rows.name, rows.passcode, rows.version, rows.arrange]),
  };
  const page = b.page('Zentrova', Object.values(sections), bar);
  return { builder: b, tree: b.tree(page), rows, sections, table: page.table };
}

/**
 * Two lists between which rows are moved, and what the application does with "move" and "commit":
 * the rows stay where `accepts` says no.
 * @param {string[]} active
 * @param {string[]} available
 * @param {{ device?: object, accepts?: (row: string, to: { section: number, index: number }) => boolean, style?: string }} options
 */
export function movableRows(active, available, options = {}) {
  const { device, accepts = () => true, style = 'grouped' } = options;
  const b = new TreeBuilder(device);
  const rowOf = (title, index, section) => {
    const settings = title.endsWith('*') ? b.add({ kind: 'image', role: 'editingAccessoryView', image: { symbol: 'chevron.right' }, frame: [0, 0, 12, 18] }) : undefined;
    const text = b.text(title.replace('*', ''));
    const isShown = index < 40;
    const cell = isShown ? b.cell({ text, style: 'default' }, [], settings) : undefined;
    return b.row(undefined, text.string, cell, {
      height: 44, visible: isShown, selectable: settings !== undefined,
      editing: { style: section === 0 ? 'delete' : 'insert', movable: true },
    });
  };
  const rows = [active, available].map((titles, section) => titles.map((title, index) => rowOf(title, index, section)));
  const sections = [b.section('Enabled modules:', undefined, rows[0]), b.section('Disabled modules:', undefined, rows[1])];
  const page = b.page('Arrage modules', sections, { largeTitle: true, back: 'Zentrova' });
  Object.assign(b.nodes[page.table], { style, editing: true });
  const tree = b.tree(page);
  const lists = rows.map((each) => [...each]);

  const replaced = () => [
    ...sections.map((id, section) => ({ op: 'replace', path: `/nodes/${id}/children`, value: [...lists[section]] })),
    ...lists.flatMap((list, section) => list.map((id) => ({ op: 'replace', path: `/nodes/${id}/editing/style`, value: section === 0 ? 'delete' : 'insert' }))),
  ];
  const spotOf = (row) => {
    const section = lists.findIndex((list) => list.includes(row));
    return { section, index: lists[section].indexOf(row) };
  };
  const put = (row, { section, index }) => {
    const from = spotOf(row);
    lists[from.section].splice(from.index, 1);
    lists[section].splice(index, 0, row);
  };
  const answer = (message) => {
    const { action, node, section, index } = message;
    if (action === 'scroll') return [];
    const to = action === 'move' ? { section, index } : { section: 1 - spotOf(node).section, index: lists[1 - spotOf(node).section].length };
    if (accepts(node, to)) put(node, to);
    return replaced();
  };
  return { builder: b, tree, table: page.table, sections, rows, lists, answer };
}

/** The first node of a kind at or below a node. */
export function below(tree, id, kind) {
  if (tree.nodes[id].kind === kind) return id;
  for (const child of tree.nodes[id].children) {
    const found = below(tree, child, kind);
    if (found) return found;
  }
  return undefined;
}
