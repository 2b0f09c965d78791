// Which of many discs are drawn where they would cover each other: the first that comes.

/** Keeps the middles of discs apart. Cells are as wide as that distance, and so hold one at most. */
export class DiscRoom {
  private readonly columns: number;
  private readonly xs: Float32Array;
  private readonly ys: Float32Array;

  /** `distance`: in pixels, to the side as well as in height; `size`: of the drawing, whose edge
      discs may touch from outside. */
  constructor(private readonly distance: number, private readonly size: { width: number; height: number }) {
    this.columns = Math.ceil(size.width / distance) + 4;
    const cells = this.columns * (Math.ceil(size.height / distance) + 4);
    this.xs = new Float32Array(cells).fill(NaN);
    this.ys = new Float32Array(cells);
  }

  /** Takes the place when it is free. */
  take(x: number, y: number): boolean {
    const { distance, columns, size } = this;
    if (x < -distance || y < -distance || x > size.width + distance || y > size.height + distance) return true;
    const cell = (Math.floor(y / distance) + 2) * columns + Math.floor(x / distance) + 2;
    for (let row = cell - columns; row <= cell + columns; row += columns) {
      for (let near = row - 1; near <= row + 1; near++) {
        if (Math.abs(this.xs[near]! - x) < distance && Math.abs(this.ys[near]! - y) < distance) return false;
      }
    }
    this.xs[cell] = x;
    this.ys[cell] = y;
    return true;
  }
}
