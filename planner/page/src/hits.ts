// What is under the pointer.

import * as L from 'leaflet';
import type { Position } from './external';
import type { Lists, PinRef } from './lists';
import { worldX, worldY } from './mercator';
import { kItinerary } from './pin_list';
import { kDiscRadius } from './pin_painter';
import { Way } from './way';

/** A place on the way that leads to a stop. */
export interface WayHit {
  ref: PinRef;
  position: Position;
}

const kWayReach = 8;
const kFingerReach = 20;

export class Hits {
  constructor(private readonly map: L.Map, private readonly lists: Lists) {}

  /** The pin at a place of the map's window; the selected one before others, then the nearest. */
  pinAt(place: L.Point, isFinger: boolean): PinRef | null {
    const { x, y, pixel } = this.worldPlace(place);
    const reach = (isFinger ? kFingerReach : kDiscRadius + 2) * pixel;
    let best: PinRef | null = null;
    let bestDistance = Infinity;
    for (const list of this.lists.all()) {
      const box = { left: x - reach, right: x + reach, top: y - reach, bottom: y + reach };
      this.lists.visitPins(list, box, (index) => {
        const pin = list.pins[index]!;
        const isSelected = this.lists.selected?.list === list.id && this.lists.selected.index === index;
        const distance = isSelected ? -1 : Math.hypot(pin.x - x, pin.y - y);
        if (distance > reach || distance > bestDistance ||
            (distance === bestDistance && best?.list === list.id && index > best.index)) return;
        best = { list: list.id, index };
        bestDistance = distance;
      });
    }
    return best;
  }

  /** The way of the itinerary at a place, the nearest one. */
  wayAt(place: L.Point, isFinger: boolean): WayHit | null {
    const list = this.lists.get(kItinerary);
    if (!list) return null;
    const { x, y, pixel } = this.worldPlace(place);
    const reach = (isFinger ? kFingerReach : kWayReach) * pixel;
    let best: { index: number; x: number; y: number; distance: number } | null = null;
    list.ways.forEach((way, index) => {
      if (!(way instanceof Way)) return;
      const { box } = way;
      if (x < box.left - reach || x > box.right + reach || y < box.top - reach ||
          y > box.bottom + reach) return;
      const found = way.nearest(this.map.getZoom(), x, y, best?.distance ?? reach);
      if (found) best = { index, ...found };
    });
    if (!best) return null;
    const found: { index: number; x: number; y: number } = best;
    const scale = 256 * 2 ** this.map.getZoom();
    const { lat, lng } = this.map.unproject(L.point(found.x * scale, found.y * scale), this.map.getZoom());
    return { ref: { list: kItinerary, index: found.index }, position: { lat, lng } };
  }

  private worldPlace(place: L.Point): { x: number; y: number; pixel: number } {
    const { lat, lng } = this.map.containerPointToLatLng(place).wrap();
    return { x: worldX(lng), y: worldY(lat), pixel: 1 / (256 * 2 ** this.map.getZoom()) };
  }
}
