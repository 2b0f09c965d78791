// New places for stops: on the nearest road where the settings say so, named by their address.

import { ask, Position, program } from './external';
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
  ask(() => program.AddPoint(kItinerary, { lat, lng, address: nameAt({ lat, lng }) }), undefined);
}

/** A new stop in front of the one at `index`. */
export function insertStop(index: number, position: Position): void {
  const at = stopPlace(position);
  ask(() => program.InsertPoint(kItinerary, index, at, nameAt(at), ''), undefined);
}

export function moveStop(list: number, index: number, position: Position): void {
  const at = list === kItinerary ? stopPlace(position) : position;
  ask(() => program.MovePoint(list, index, at), undefined);
}
