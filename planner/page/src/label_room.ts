// Keeps labels from covering each other: a box of the screen is given away once, and none that the
// map's edge would cut.

const kCell = 64;
/** Side of the cells in which dots are noted. */
const kDotCell = 8;

export interface Rectangle {
  left: number;
  top: number;
  right: number;
  bottom: number;
}

export class LabelRoom {
  private readonly cells = new Map<number, Rectangle[]>();
  private readonly dots: Uint8Array;
  private readonly dotColumns: number;
  private readonly dotRows: number;

  /** `map`: what of the drawing is seen now; `size`: of all of it. */
  constructor(private readonly map: Rectangle, size: { width: number; height: number }) {
    this.dotColumns = Math.ceil(size.width / kDotCell);
    this.dotRows = Math.ceil(size.height / kDotCell);
    this.dots = new Uint8Array(this.dotColumns * this.dotRows);
  }

  /** Takes the box when it is free. */
  take(box: Rectangle): boolean {
    if (this.isCut(box) || !this.isFree(box)) return false;
    this.occupy(box);
    return true;
  }

  /** Takes the box in any case. */
  occupy(box: Rectangle): void {
    this.forEachCell(box, (cell) => {
      const taken = this.cells.get(cell);
      if (taken) taken.push(box);
      else this.cells.set(cell, [box]);
      return true;
    });
  }

  /** Takes the little that a dot covers. Boxes for thousands of them would take too long. */
  occupyDot(x: number, y: number): void {
    const column = Math.floor(x / kDotCell);
    const row = Math.floor(y / kDotCell);
    if (column >= 0 && column < this.dotColumns && row >= 0 && row < this.dotRows) {
      this.dots[row * this.dotColumns + column] = 1;
    }
  }

  isFree(box: Rectangle): boolean {
    return !this.hasDot(box) && this.forEachCell(box, (cell) =>
      (this.cells.get(cell) ?? []).every((other) =>
        box.right <= other.left || box.left >= other.right ||
        box.bottom <= other.top || box.top >= other.bottom));
  }

  private hasDot({ left, top, right, bottom }: Rectangle): boolean {
    const lastRow = Math.min(this.dotRows - 1, Math.floor(bottom / kDotCell));
    const lastColumn = Math.min(this.dotColumns - 1, Math.floor(right / kDotCell));
    for (let row = Math.max(0, Math.floor(top / kDotCell)); row <= lastRow; row++) {
      for (let column = Math.max(0, Math.floor(left / kDotCell)); column <= lastColumn; column++) {
        if (this.dots[row * this.dotColumns + column]) return true;
      }
    }
    return false;
  }

  /** What lies beyond the map whole comes into sight when the map is moved. */
  private isCut({ left, top, right, bottom }: Rectangle): boolean {
    const isInside = left >= this.map.left && right <= this.map.right &&
      top >= this.map.top && bottom <= this.map.bottom;
    return !isInside && left < this.map.right && right > this.map.left &&
      top < this.map.bottom && bottom > this.map.top;
  }

  private forEachCell(box: Rectangle, visit: (cell: number) => boolean): boolean {
    for (let row = Math.floor(box.top / kCell); row <= Math.floor(box.bottom / kCell); row++) {
      for (let column = Math.floor(box.left / kCell); column <= Math.floor(box.right / kCell); column++) {
        if (!visit(row * 4096 + column)) return false;
      }
    }
    return true;
  }
}
