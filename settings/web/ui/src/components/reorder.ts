// The places of rows in an editing table, before and after a move. A place has the form that the action
// "move" uses: the index is counted without the moved row.

import { childrenOf, nodeOf, type Tree } from '../protocol/tree.js';

export interface Spot { section: number; index: number }

/** The rows of one section, in their order. */
export interface SectionRows { id: string; rows: readonly string[] }
export type Order = readonly SectionRows[];

/** The rows of a table as the tree has them. */
export function orderOf(tree: Tree, table: string): Order {
  return childrenOf(tree, table, 'section').map((id) => ({ id, rows: childrenOf(tree, id, 'row') }));
}

export function spotOf(order: Order, row: string): Spot | undefined {
  for (const [section, { rows }] of order.entries()) {
    const index = rows.indexOf(row);
    if (index >= 0) return { section, index };
  }
  return undefined;
}

export function sameSpot(a: Spot | undefined, b: Spot | undefined): boolean {
  return a?.section === b?.section && a?.index === b?.index;
}

/** The order with a row moved to another place, or to the nearest place if that one does not exist. */
export function moved(order: Order, row: string, spot: Spot): Order {
  const section = Math.min(Math.max(spot.section, 0), order.length - 1);
  return order.map((each, place) => {
    const rows = each.rows.includes(row) ? each.rows.filter((id) => id !== row) : each.rows;
    if (place !== section) return rows === each.rows ? each : { ...each, rows };
    const index = Math.min(Math.max(spot.index, 0), rows.length);
    return { ...each, rows: [...rows.slice(0, index), row, ...rows.slice(index)] };
  });
}

/** The next place up (-1) or down (1); crosses into the next section at the end of a section. */
export function stepFrom(order: Order, spot: Spot, direction: -1 | 1): Spot | undefined {
  const { section, index } = spot;
  const last = (order[section]?.rows.length ?? 1) - 1;
  if (direction < 0 && index > 0) return { section, index: index - 1 };
  if (direction > 0 && index < last) return { section, index: index + 1 };
  const next = order[section + direction];
  if (!next) return undefined;
  return { section: section + direction, index: direction < 0 ? next.rows.length : 0 };
}

/** The first (-1) or the last (1) place of a row's section. */
export function edgeOf(order: Order, spot: Spot, direction: -1 | 1): Spot {
  return { section: spot.section, index: direction < 0 ? 0 : (order[spot.section]?.rows.length ?? 1) - 1 };
}

/** The name of a section in announcements. */
export function sectionName(tree: Tree, order: Order, section: number): string {
  const id = order[section]?.id;
  const header = id === undefined ? undefined : nodeOf(tree, id, 'section')?.header;
  return header?.trim().replace(/:$/, '') || `section ${section + 1}`;
}

/** The name of a place in announcements, such as "2 of 4 in Enabled modules". */
export function spotText(tree: Tree, order: Order, spot: Spot): string {
  const count = order[spot.section]?.rows.length ?? 0;
  return `${spot.index + 1} of ${count} in ${sectionName(tree, order, spot.section)}`;
}

/** The name of a row in announcements. Only visible rows have a text. */
export function rowName(tree: Tree, row: string): string {
  const node = nodeOf(tree, row, 'row');
  if (node?.title) return node.title;
  const cell = node?.children.map((child) => nodeOf(tree, child, 'cell')).find((each) => each !== undefined);
  return cell?.text?.string || 'the row';
}
