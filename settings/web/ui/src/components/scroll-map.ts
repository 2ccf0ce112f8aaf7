// Maps positions between the application's table and the page. They differ because texts may wrap
// differently or be larger on the page. Rows and their heights connect the two.

/** A place on the page and the same place in the application's table, in points from the top of the content. */
export interface Anchor { page: number; table: number }

/** A part of the content that exists on both sides: a row, or the space of rows not in the document. */
export interface Stretch { page: number; pageHeight: number; table: number; tableHeight: number }

export function anchorsOf(stretches: readonly Stretch[], pageEnd: number, tableEnd: number): Anchor[] {
  const anchors: Anchor[] = [{ page: 0, table: 0 }];
  const add = (page: number, table: number): void => {
    const last = anchors[anchors.length - 1] as Anchor;
    anchors.push({ page: Math.max(page, last.page), table: Math.max(table, last.table) });
  };
  for (const { page, pageHeight, table, tableHeight } of stretches) {
    add(page, table);
    add(page + pageHeight, table + tableHeight);
  }
  add(pageEnd, tableEnd);
  return anchors;
}

export function toTable(anchors: readonly Anchor[], page: number): number {
  return mapped(anchors, page, 'page', 'table');
}

export function toPage(anchors: readonly Anchor[], table: number): number {
  return mapped(anchors, table, 'table', 'page');
}

// Interpolates between two anchors; beyond the ends, one point maps to one point.
function mapped(anchors: readonly Anchor[], place: number, from: keyof Anchor, to: keyof Anchor): number {
  const after = anchors.findIndex((anchor) => anchor[from] > place);
  const before = anchors[after < 0 ? anchors.length - 1 : after - 1];
  const next = anchors[after];
  if (!before) return place;
  if (!next) return before[to] + place - before[from];
  const share = (place - before[from]) / (next[from] - before[from]);
  return before[to] + share * (next[to] - before[to]);
}
