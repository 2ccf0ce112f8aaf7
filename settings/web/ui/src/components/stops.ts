// Arrow keys among things of which one at a time is a tab stop: tabs, the segments of a control.

const sideways = new Map([['ArrowRight', 1], ['ArrowLeft', -1]]);
const anyWay = new Map([...sideways, ['ArrowDown', 1], ['ArrowUp', -1]]);

/** Where a key leads from the stop at `place` among `count`, around the ends too; nowhere with any other key. */
export function stopByKey(key: string, place: number, count: number, arrows: 'sideways' | 'any'): number | undefined {
  if (count === 0) return undefined;
  if (key === 'Home') return 0;
  if (key === 'End') return count - 1;
  const step = (arrows === 'any' ? anyWay : sideways).get(key);
  return step === undefined ? undefined : (place + step + count) % count;
}
