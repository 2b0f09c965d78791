// What of a straight line lies in a box.

import type { Rectangle } from './label_room';

/** The shares of a line at which it enters and leaves a box; null when it does not meet it. */
export function sharesInside(x0: number, y0: number, x1: number, y1: number, box: Rectangle): [number, number] | null {
  const dx = x1 - x0;
  const dy = y1 - y0;
  let enters = 0;
  let leaves = 1;
  const sides: [number, number][] = [[-dx, x0 - box.left], [dx, box.right - x0], [-dy, y0 - box.top], [dy, box.bottom - y0]];
  for (const [towards, room] of sides) {
    if (towards === 0 && room < 0) return null;
    if (towards < 0) enters = Math.max(enters, room / towards);
    if (towards > 0) leaves = Math.min(leaves, room / towards);
  }
  return enters <= leaves ? [enters, leaves] : null;
}
