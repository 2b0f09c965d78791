// Finds points in a box: the box around all points is cut into about as many cells as there are
// points, and the points of a cell stand together in one array.

import type { Box } from './way';

export interface Placed {
  x: number;
  y: number;
}

export class GridIndex {
  private readonly side: number;
  private readonly starts: Uint32Array;
  private readonly order: Uint32Array;
  private left = Infinity;
  private top = Infinity;
  private width = 0;
  private height = 0;

  constructor(private readonly points: readonly Placed[]) {
    this.side = Math.max(1, Math.min(256, Math.ceil(Math.sqrt(points.length))));
    let right = -Infinity;
    let bottom = -Infinity;
    for (const { x, y } of points) {
      if (Number.isNaN(x)) continue;
      this.left = Math.min(this.left, x);
      this.top = Math.min(this.top, y);
      right = Math.max(right, x);
      bottom = Math.max(bottom, y);
    }
    this.width = Math.max(right - this.left, Number.MIN_VALUE);
    this.height = Math.max(bottom - this.top, Number.MIN_VALUE);

    this.starts = new Uint32Array(this.side * this.side + 1);
    const cells = new Int32Array(points.length);
    points.forEach(({ x, y }, i) => {
      cells[i] = Number.isNaN(x) ? -1 : this.row(y) * this.side + this.column(x);
      if (cells[i]! >= 0) this.starts[cells[i]! + 1]!++;
    });
    for (let cell = 0; cell < this.side * this.side; cell++) {
      this.starts[cell + 1]! += this.starts[cell]!;
    }
    this.order = new Uint32Array(this.starts[this.side * this.side]!);
    const next = this.starts.slice();
    points.forEach((_, i) => {
      if (cells[i]! >= 0) this.order[next[cells[i]!]!++] = i;
    });
  }

  /** Visits the indices of the points in a box, in no particular order. */
  visit(box: Box, found: (index: number) => void): void {
    if (this.order.length === 0 || box.right < this.left || box.bottom < this.top ||
        box.left > this.left + this.width || box.top > this.top + this.height) return;
    const lastRow = this.row(box.bottom);
    const lastColumn = this.column(box.right);
    for (let row = this.row(box.top); row <= lastRow; row++) {
      for (let column = this.column(box.left); column <= lastColumn; column++) {
        const cell = row * this.side + column;
        for (let k = this.starts[cell]!; k < this.starts[cell + 1]!; k++) {
          const i = this.order[k]!;
          const { x, y } = this.points[i]!;
          if (x >= box.left && x <= box.right && y >= box.top && y <= box.bottom) found(i);
        }
      }
    }
  }

  private column(x: number): number {
    return this.cellOf((x - this.left) / this.width);
  }

  private row(y: number): number {
    return this.cellOf((y - this.top) / this.height);
  }

  private cellOf(share: number): number {
    return Math.max(0, Math.min(this.side - 1, Math.floor(share * this.side)));
  }
}
