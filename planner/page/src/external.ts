// What the program offers to the page as `window.external`, and the values that cross the bridge.

export interface Position {
  lat: number;
  lng: number;
}

/** The way that leads to a point: metres, seconds, and its shape. */
export interface Leg {
  distance: number;
  duration: number;
  driving: number;
  points: Position[];
  color: number;
}

/** A point of a list; reading a property asks the program. */
export interface ListPoint extends Position {
  alt: number;
  address: string;
  snippet: string;
  route: Leg | null;
}

/** What `AddPoint` takes. */
export interface NewPoint extends Position {
  address?: string;
}

/** One row of `GetPins`. */
export interface PinRow extends Position {
  alt: number;
  address: string;
  snippet: string;
  /** A way leads there, which `GetPoint` gives. */
  route?: true;
}

/** One row of `GetWays`; its shape is latitude, longitude, latitude, ... */
export interface WayRow extends Omit<Leg, 'points'> {
  shape: (number | null)[];
}

export interface Settings {
  readonly AutoCalc: boolean;
  readonly DistMiles: boolean;
  readonly AutoAddStep: boolean;
  readonly DisplayNumber: boolean;
  readonly ForceRoad: boolean;
}

export type PreviewCallback = (status: number, route: Leg | null) => void;

export interface Program {
  readonly Settings: Settings;
  Trace(text: string): void;
  MessageBox(text: string, style: number): number;
  GetPoint(list: number, index: number): ListPoint;
  SelectPoint(list: number, index: number): void;
  DeletePoint(list: number, index: number): void;
  RenamePoint(list: number, index: number, name: string): void;
  MovePoint(list: number, index: number, position: Position): void;
  InsertPoint(list: number, index: number, position: Position, name: string, comment: string): void;
  AddPoint(list: number, point: NewPoint): void;
  AddFavorite(point: ListPoint): void;
  Calculate(list: number): void;
  SendToGps(target: number, list: number, index: number): void;
  GetLocation(position: Position): ListPoint;
  GetRoadLocation(position: Position): ListPoint | null;
  GetStreetViewLocation(position: Position): ListPoint | null;
  ReverseGeocoding(position: Position): ListPoint | null;
  GetRoutePreview(list: number, index: number, position: Position, moved: boolean,
                  callback: PreviewCallback): Leg | null;
  GetElevation(position: Position): ListPoint | null;
  GetStrCoords(position: Position): string;
  SetCurrentMap(name: string, type: number): void;
  GetCount(list: number): number;
  GetPins(list: number, first: number, count: number): string;
  GetWays(list: number, first: number, count: number): string;
  GetTexts(): string;
}

export const program = window.external as unknown as Program;

/** Asks the program; what it refuses is traced, and `fallback` is the answer. */
export function ask<T>(question: () => T, fallback: T, refused?: (refusal: unknown) => void): T {
  try {
    return question();
  } catch (refusal) {
    refused?.(refusal);
    try {
      program.Trace(String(refusal));
    } catch {
      // The program has gone: there is nobody left to tell.
    }
    return fallback;
  }
}
