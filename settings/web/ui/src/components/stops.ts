// Arrow keys in a group with one tab stop, such as tabs or the segments of a control.

const sideways = new Map([['ArrowRight', 1], ['ArrowLeft', -1]]);
const anyWay = new Map([...sideways, ['ArrowDown', 1], ['ArrowUp', -1]]);

/** The stop that a key leads to from `place` among `count`; wraps around. Undefined for other keys. */
export function stopByKey(key: string, place: number, count: number, arrows: 'sideways' | 'any'): number | undefined {
  if (count === 0) return undefined;
  if (key === 'Home') return 0;
  if (key === 'End') return count - 1;
  const step = (arrows === 'any' ? anyWay : sideways).get(key);
  return step === undefined ? undefined : (place + step + count) % count;
}
