// Towns with their names, the largest first.

import { worldX, worldY } from './mercator';
import { PackedNumbers } from './packed_numbers';

const kUnitsPerDegree = 512;

export interface Town {
  name: string;
  x: number;
  y: number;
  /** In thousands. */
  population: number;
}

/** Reads what the build packs: count, then for each town the length of its name in bytes, the name
    in UTF-8, longitude and latitude in 1/512 degree, and its population in thousands. */
export function readTowns(bytes: Uint8Array): Town[] {
  const numbers = new PackedNumbers(bytes);
  return Array.from({ length: numbers.whole() }, () => {
    const name = numbers.text(numbers.whole());
    const x = worldX(numbers.signed() / kUnitsPerDegree);
    const y = worldY(numbers.signed() / kUnitsPerDegree);
    return { name, x, y, population: numbers.whole() };
  });
}
