// One numbered list of the program as the page keeps it: pins, and the ways that lead to them.

import { ask, Leg, PinRow, Position, program } from './external';
import { isOnMap, worldX, worldY } from './mercator';
import { Way } from './way';

export const kItinerary = 0;
export const kSearchResults = 1;
export const kFavourites = 2;
export const kPointsOfInterest = 3;

/** Rows of one question to the program. */
const kRowsAtOnce = 2000;

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

  /** Asks for the way that leads to a pin. */
  loadWay(index: number): void {
    if (index < 0 || index >= this.pins.length) return;
    const leg = ask(() => copyOf(program.GetPoint(this.id, index).route), null);
    this.ways[index] = leg && leg.points.length > 1 ? new Way(leg) : null;
  }

  clearWays(): void {
    this.ways.fill(null);
  }

  private dropWay(index: number): void {
    if (index < this.ways.length) this.ways[index] = null;
  }
}

/** Each look at a property of the program's object asks it. */
function copyOf(leg: Leg | null): Leg | null {
  if (!leg) return null;
  const { distance, duration, driving, points, color } = leg;
  return { distance, duration, driving, points: Array.isArray(points) ? points : [], color };
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
