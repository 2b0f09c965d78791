// One numbered list of the program as the page keeps it: pins, and the ways that lead to them.

import { ask, PinRow, Position, program, WayRow } from './external';
import { isOnMap, worldX, worldY } from './mercator';
import { Way } from './way';

export const kItinerary = 0;
export const kSearchResults = 1;
export const kFavourites = 2;
export const kPointsOfInterest = 3;

/** Rows of one question to the program. */
const kRowsAtOnce = 2000;
const kWaysAtOnce = 200;

export interface Pin {
  lat: number;
  lng: number;
  /** On the world square; not a number when the position cannot stand on a map. */
  x: number;
  y: number;
  name: string;
}

/** `unknown`: the program has not been asked yet; null: there is none. */
export type WayState = Way | null | 'unknown';

export class PinList {
  pins: Pin[] = [];
  ways: WayState[] = [];

  constructor(readonly id: number) {}

  get isEditable(): boolean {
    return this.id === kItinerary || this.id === kPointsOfInterest;
  }

  clear(): void {
    this.pins = [];
    this.ways = [];
  }

  /** Reads the pins from an index on anew. What was known of the ways behind it no longer counts. */
  refresh(first: number): void {
    const start = Math.max(0, Math.min(first, this.pins.length));
    const count = ask(() => program.GetCount(this.id), start);
    this.pins.length = start;
    this.ways.length = Math.min(this.ways.length, start);
    for (let at = start; at < count; at += kRowsAtOnce) {
      const rows = readRows(this.id, at, Math.min(kRowsAtOnce, count - at));
      if (rows.length === 0) break;
      for (const row of rows) {
        this.pins.push(toPin(row));
        this.ways.push(row.route ? 'unknown' : null);
      }
    }
  }

  insert(index: number): void {
    if (index < 0 || index > this.pins.length) return;
    const [row] = readRows(this.id, index, 1);
    if (!row) return;
    this.pins.splice(index, 0, toPin(row));
    this.ways.splice(index, 0, null);
    this.dropWay(index + 1);
  }

  remove(index: number): void {
    if (index < 0 || index >= this.pins.length) return;
    this.pins.splice(index, 1);
    this.ways.splice(index, 1);
    this.dropWay(index);
  }

  /** There is a way that leads to a pin; it is asked for in its turn. */
  expectWay(index: number): void {
    if (index >= 0 && index < this.pins.length) this.ways[index] = 'unknown';
  }

  /** Asks for the ways from one on that are not known; as many as come in one answer. */
  loadWays(first: number): void {
    let end = first;
    while (end < first + kWaysAtOnce && this.ways[end] === 'unknown') end++;
    const rows = readWays(this.id, first, end - first);
    // Without an answer there is none, and no second question about it.
    for (let i = 0; i < Math.max(1, rows.length) && first + i < end; i++) {
      const row = rows[i];
      this.ways[first + i] = row && row.shape.length > 2 ? toWay(row) : null;
    }
  }

  clearWays(): void {
    this.ways.fill(null);
  }

  private dropWay(index: number): void {
    if (index < this.ways.length) this.ways[index] = null;
  }
}

function toWay({ shape, ...way }: WayRow): Way {
  const points: Position[] = [];
  for (let i = 0; i + 1 < shape.length; i += 2)
    points.push({ lat: shape[i] ?? NaN, lng: shape[i + 1] ?? NaN });
  return new Way({ ...way, points });
}

function toPin(row: Position & { address?: string }): Pin {
  const fits = isOnMap(row);
  return {
    lat: row.lat,
    lng: row.lng,
    x: fits ? worldX(row.lng) : NaN,
    y: fits ? worldY(row.lat) : NaN,
    name: row.address ?? '',
  };
}

function readRows(list: number, first: number, count: number): PinRow[] {
  return ask(() => {
    const rows: unknown = JSON.parse(program.GetPins(list, first, count));
    return Array.isArray(rows) ? (rows as PinRow[]) : [];
  }, []);
}

function readWays(list: number, first: number, count: number): (WayRow | null)[] {
  return ask(() => {
    const rows: unknown = JSON.parse(program.GetWays(list, first, count));
    return Array.isArray(rows) ? (rows as (WayRow | null)[]) : [];
  }, []);
}
