// The outline of the world as `resources/world/make_outline.py` packs it.

import { worldX, worldY } from './mercator';
import { PackedNumbers } from './packed_numbers';

const kUnitsPerDegree = 256;
const kSouthEdge = -85 * kUnitsPerDegree;

/** A line or ring on the world square, ready to be drawn, with the box that holds it. */
export interface Outline {
  path: Path2D;
  /** The same without what runs along the southern edge: there is no coast. */
  shore: Path2D;
  left: number;
  top: number;
  right: number;
  bottom: number;
}

export interface Country {
  code: string;
  x: number;
  y: number;
  /** Square root of the area, in degrees of longitude. */
  size: number;
}

export interface World {
  land: Outline[];
  lakes: Outline[];
  borders: Outline[];
  countries: Country[];
}

function readOutline(numbers: PackedNumbers, isRing: boolean): Outline {
  const outline = { path: new Path2D(), shore: new Path2D(), left: Infinity, top: Infinity, right: -Infinity, bottom: -Infinity };
  let lng = 0;
  let lat = 0;
  let wasAtEdge = true;
  const count = numbers.whole();
  for (let i = 0; i < count; i++) {
    lng += numbers.signed();
    lat += numbers.signed();
    const x = worldX(lng / kUnitsPerDegree);
    const y = worldY(lat / kUnitsPerDegree);
    if (i === 0) outline.path.moveTo(x, y);
    else outline.path.lineTo(x, y);
    const isAtEdge = lat <= kSouthEdge;
    if (i === 0 || (isAtEdge && wasAtEdge)) outline.shore.moveTo(x, y);
    else outline.shore.lineTo(x, y);
    wasAtEdge = isAtEdge;
    outline.left = Math.min(outline.left, x);
    outline.right = Math.max(outline.right, x);
    outline.top = Math.min(outline.top, y);
    outline.bottom = Math.max(outline.bottom, y);
  }
  if (isRing) outline.path.closePath();
  return outline;
}

function readOutlines(numbers: PackedNumbers, isRing: boolean): Outline[] {
  return Array.from({ length: numbers.whole() }, () => readOutline(numbers, isRing));
}

export function readWorld(bytes: Uint8Array): World {
  const numbers = new PackedNumbers(bytes);
  const land = readOutlines(numbers, true);
  const lakes = readOutlines(numbers, true);
  const borders = readOutlines(numbers, false);
  const countries = Array.from({ length: numbers.whole() }, () => {
    const code = numbers.text(2);
    const x = worldX(numbers.signed() / kUnitsPerDegree);
    const y = worldY(numbers.signed() / kUnitsPerDegree);
    return { code, x, y, size: numbers.whole() };
  });
  return { land, lakes, borders, countries };
}
