// The way of a leg, projected once, with a rank for each point: the coarsest zoom at which it can
// be told from the points before it. A million points are then drawn from a few thousand.

import type { Leg } from './external';
import { worldX, worldY } from './mercator';

/** Zooms that have a level of detail of their own. */
export const kDetailZooms = 19;
/** A point nearer than this to the one before is left out, in pixels of the zoom. */
const kTolerance = 0.75;
const kBlock = 128;

/** The points of one zoom: their numbers, and a box around each run of `kBlock` of them. */
interface Level {
  points: Uint32Array;
  /** left, top, right, bottom of each block, the first point of the next one included. */
  boxes: Float64Array;
}

export interface Box {
  left: number;
  top: number;
  right: number;
  bottom: number;
}

/** Called with the world coordinates of one piece of line. */
export type SegmentVisitor = (x0: number, y0: number, x1: number, y1: number) => void;

export class Way {
  readonly count: number;
  readonly box: Box = { left: Infinity, top: Infinity, right: -Infinity, bottom: -Infinity };
  readonly colour: string | null;
  readonly distance: number;
  readonly duration: number;
  private readonly xs: Float64Array;
  private readonly ys: Float64Array;
  private readonly ranks: Uint8Array;
  /** How many points each level has. */
  private readonly counts = new Uint32Array(kDetailZooms + 1);
  private readonly levels: (Level | undefined)[] = [];

  constructor(leg: Leg) {
    const shape = leg.points.filter((p) => Number.isFinite(p.lat) && Number.isFinite(p.lng));
    this.count = shape.length;
    this.distance = leg.distance;
    this.duration = leg.duration;
    this.colour = colourText(leg.color);
    this.xs = new Float64Array(this.count);
    this.ys = new Float64Array(this.count);
    this.ranks = new Uint8Array(this.count);
    shape.forEach((point, i) => {
      this.xs[i] = worldX(point.lng);
      this.ys[i] = worldY(point.lat);
    });
    this.measureBox();
    this.rank();
  }

  private measureBox(): void {
    for (let i = 0; i < this.count; i++) {
      this.box.left = Math.min(this.box.left, this.xs[i]!);
      this.box.right = Math.max(this.box.right, this.xs[i]!);
      this.box.top = Math.min(this.box.top, this.ys[i]!);
      this.box.bottom = Math.max(this.box.bottom, this.ys[i]!);
    }
  }

  private rank(): void {
    const lastX = new Float64Array(kDetailZooms);
    const lastY = new Float64Array(kDetailZooms);
    const least = Array.from({ length: kDetailZooms }, (_, z) => kTolerance / (256 * 2 ** z));
    for (let i = 0; i < this.count; i++) {
      const x = this.xs[i]!;
      const y = this.ys[i]!;
      let zoom = kDetailZooms;
      if (i === 0 || i === this.count - 1) {
        zoom = 0;
      } else {
        while (zoom > 0 && Math.max(Math.abs(x - lastX[zoom - 1]!), Math.abs(y - lastY[zoom - 1]!)) >
                             least[zoom - 1]!) {
          zoom--;
        }
      }
      this.ranks[i] = zoom;
      for (let z = zoom; z < kDetailZooms; z++) {
        lastX[z] = x;
        lastY[z] = y;
      }
      for (let z = zoom; z <= kDetailZooms; z++) this.counts[z]!++;
    }
  }

  private level(zoom: number): Level {
    const rank = rankAt(zoom);
    return (this.levels[rank] ??= this.makeLevel(rank));
  }

  private makeLevel(rank: number): Level {
    const chosen: number[] = [];
    for (let i = 0; i < this.count; i++) {
      if (this.ranks[i]! <= rank || rank === kDetailZooms) chosen.push(i);
    }
    const points = Uint32Array.from(chosen);
    const blocks = Math.ceil(points.length / kBlock);
    const boxes = new Float64Array(4 * blocks);
    for (let block = 0; block < blocks; block++) {
      let [left, top, right, bottom] = [Infinity, Infinity, -Infinity, -Infinity];
      const end = Math.min((block + 1) * kBlock + 1, points.length);
      for (let k = block * kBlock; k < end; k++) {
        const i = points[k]!;
        left = Math.min(left, this.xs[i]!);
        right = Math.max(right, this.xs[i]!);
        top = Math.min(top, this.ys[i]!);
        bottom = Math.max(bottom, this.ys[i]!);
      }
      boxes.set([left, top, right, bottom], 4 * block);
    }
    return { points, boxes };
  }

  /** About how many points are drawn at `zoom` of what a box may see. */
  pointsIn(zoom: number, view: Box): number {
    const all = this.counts[rankAt(zoom)]!;
    if (all <= kBlock) return all;
    const { boxes } = this.level(zoom);
    let count = 0;
    for (let at = 0; at < boxes.length; at += 4) if (isBlockSeen(boxes, at, view)) count += kBlock;
    return count;
  }

  /** Visits the runs of the way at `zoom` that a box may see; `start` is true where a run begins. */
  visit(zoom: number, view: Box, draw: (x: number, y: number, start: boolean) => void): void {
    const { points, boxes } = this.level(zoom);
    let isOpen = false;
    for (let block = 0; 4 * block < boxes.length; block++) {
      if (!isBlockSeen(boxes, 4 * block, view)) {
        isOpen = false;
        continue;
      }
      const end = Math.min((block + 1) * kBlock + 1, points.length);
      for (let k = block * kBlock + (isOpen ? 1 : 0); k < end; k++) {
        const i = points[k]!;
        draw(this.xs[i]!, this.ys[i]!, !isOpen);
        isOpen = true;
      }
    }
  }

  /** The nearest place of the way within `reach` of a position; null when there is none. */
  nearest(zoom: number, x: number, y: number, reach: number): { x: number; y: number; distance: number } | null {
    let best: { x: number; y: number; distance: number } | null = null;
    let fromX = 0;
    let fromY = 0;
    const around = { left: x - reach, top: y - reach, right: x + reach, bottom: y + reach };
    this.visit(zoom, around, (toX, toY, start) => {
      if (!start) {
        const found = footOn(fromX, fromY, toX, toY, x, y);
        if (found.distance <= (best?.distance ?? reach)) best = found;
      }
      fromX = toX;
      fromY = toY;
    });
    return best;
  }
}

function rankAt(zoom: number): number {
  return Math.max(0, Math.min(kDetailZooms, Math.ceil(zoom)));
}

function isBlockSeen(boxes: Float64Array, at: number, view: Box): boolean {
  return boxes[at]! <= view.right && boxes[at + 2]! >= view.left &&
    boxes[at + 1]! <= view.bottom && boxes[at + 3]! >= view.top;
}

/** The point of a piece of line that is nearest to x, y. */
export function footOn(x0: number, y0: number, x1: number, y1: number, x: number, y: number):
    { x: number; y: number; distance: number } {
  const dx = x1 - x0;
  const dy = y1 - y0;
  const length = dx * dx + dy * dy;
  const along = length === 0 ? 0 : Math.max(0, Math.min(1, ((x - x0) * dx + (y - y0) * dy) / length));
  const footX = x0 + along * dx;
  const footY = y0 + along * dy;
  return { x: footX, y: footY, distance: Math.hypot(x - footX, y - footY) };
}

function colourText(colour: number): string | null {
  if (!Number.isFinite(colour) || colour <= 0) return null;
  return '#' + (Math.floor(colour) & 0xffffff).toString(16).padStart(6, '0');
}
