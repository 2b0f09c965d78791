// The lists of the program, their indexes for the pointer, and what is selected.

import { GridIndex } from './grid_index';
import { Pin, PinList } from './pin_list';
import { Box, Way } from './way';

export interface PinRef {
  list: number;
  index: number;
}

/** How long ways are asked for in one go, and how often they are shown meanwhile, in milliseconds. */
const kLoadTime = 12;
const kShowInterval = 400;

export class Lists {
  selected: PinRef | null = null;
  private readonly lists = new Map<number, PinList>();
  private readonly indexes = new Map<number, GridIndex>();
  private isLoadingWays = false;
  private readonly channel = new MessageChannel();

  constructor(private readonly changed: () => void) {}

  /** Makes a list, or empties the one of this number. */
  create(id: number): void {
    this.lists.set(id, new PinList(id));
    this.touch(id);
  }

  get(id: number): PinList | undefined {
    return this.lists.get(id);
  }

  /** All lists, the itinerary last. */
  all(): PinList[] {
    return [...this.lists.values()].sort((a, b) => b.id - a.id);
  }

  pin(ref: PinRef | null): Pin | undefined {
    return ref ? this.lists.get(ref.list)?.pins[ref.index] : undefined;
  }

  way(ref: PinRef): Way | null {
    const way = this.lists.get(ref.list)?.ways[ref.index];
    return way instanceof Way ? way : null;
  }

  /** Visits the pins of a list that stand in a box of the world square. */
  visitPins(list: PinList, box: Box, found: (index: number) => void): void {
    let index = this.indexes.get(list.id);
    if (!index) this.indexes.set(list.id, (index = new GridIndex(list.pins)));
    index.visit(box, found);
  }

  /** A list has changed. */
  touch(id: number): void {
    this.indexes.delete(id);
    if (this.selected && !this.pin(this.selected)) this.selected = null;
    this.changed();
    this.loadWays();
  }

  // Timers would wait longer the more of them follow each other.
  private later(work: () => void): void {
    this.channel.port1.onmessage = work;
    this.channel.port2.postMessage(null);
  }

  // Ways that nobody has told about, as after a file was opened, are asked for bit by bit.
  private loadWays(): void {
    if (this.isLoadingWays) return;
    this.isLoadingWays = true;
    let shown = performance.now();
    const loadSome = (): void => {
      const start = performance.now();
      const isDone = [...this.lists.values()].every((list) => loadWaysUntil(list, start + kLoadTime));
      if (isDone || start - shown > kShowInterval) {
        shown = start;
        this.changed();
      }
      this.isLoadingWays = !isDone;
      if (!isDone) this.later(loadSome);
    };
    loadSome();
  }
}

/** Asks for ways of a list until it is late; true when none is left. */
function loadWaysUntil(list: PinList, end: number): boolean {
  for (let i = list.ways.indexOf('unknown'); i >= 0; i = list.ways.indexOf('unknown', i)) {
    if (performance.now() > end) return false;
    list.loadWays(i);
  }
  return true;
}
