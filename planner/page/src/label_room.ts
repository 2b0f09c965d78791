// Keeps labels from covering each other: a box of the screen is given away once, and none that the
// map's edge would cut.

const kCell = 64;

export interface Rectangle {
  left: number;
  top: number;
  right: number;
  bottom: number;
}

export class LabelRoom {
  private readonly cells = new Map<number, Rectangle[]>();

  /** `map`: what of the drawing is seen now. */
  constructor(private readonly map: Rectangle | null = null) {}

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

  isFree(box: Rectangle): boolean {
    return this.forEachCell(box, (cell) =>
      (this.cells.get(cell) ?? []).every((other) =>
        box.right <= other.left || box.left >= other.right ||
        box.bottom <= other.top || box.top >= other.bottom));
  }

  /** What lies beyond the map whole comes into sight when the map is moved. */
  private isCut({ left, top, right, bottom }: Rectangle): boolean {
    if (!this.map) return false;
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
