// New places for stops: on the nearest road where the settings say so, named by their address.

import { ask, Position, program } from './external';
import { order } from './orders';
import { kItinerary } from './pin_list';

/** Where a stop goes that was put down here. */
export function stopPlace(position: Position): Position {
  if (!ask(() => program.Settings.ForceRoad, false)) return position;
  const onRoad = ask(() => program.GetRoadLocation(position), null);
  return onRoad ? { lat: onRoad.lat, lng: onRoad.lng } : position;
}

function nameAt(position: Position): string {
  return ask(() => program.GetLocation(position).address, '');
}

export function addStop(position: Position): void {
  const { lat, lng } = stopPlace(position);
  const address = nameAt({ lat, lng });
  order(() => program.AddPoint(kItinerary, { lat, lng, address }));
}

/** A new stop in front of the one at `index`. */
export function insertStop(index: number, position: Position): void {
  const at = stopPlace(position);
  const name = nameAt(at);
  order(() => program.InsertPoint(kItinerary, index, at, name, ''));
}

/** False when the program does not move it. */
export function moveStop(list: number, index: number, position: Position): boolean {
  const at = list === kItinerary ? stopPlace(position) : position;
  return order(() => program.MovePoint(list, index, at));
}
