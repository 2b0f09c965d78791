// The square world of web maps: x runs east from 0 at 180 degrees west to 1, y runs south from 0 at
// the northern edge to 1.

import type { Position } from './external';

/** The latitude where the square ends. */
export const kEdgeLatitude = 85.0511287798066;

export function worldX(lng: number): number {
  return lng / 360 + 0.5;
}

export function worldY(lat: number): number {
  const clamped = Math.max(-kEdgeLatitude, Math.min(kEdgeLatitude, lat));
  const sine = Math.sin((clamped * Math.PI) / 180);
  return 0.5 - Math.log((1 + sine) / (1 - sine)) / (4 * Math.PI);
}

/** True for a position that can stand on a map. */
export function isOnMap(position: Position): boolean {
  return Number.isFinite(position.lat) && Number.isFinite(position.lng) &&
    Math.abs(position.lat) <= 90 && Math.abs(position.lng) <= 360;
}
