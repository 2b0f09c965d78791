// Measuring along a line of clicks.

import * as L from 'leaflet';
import { element, iconButton } from './dom';
import { ask, Position, program } from './external';
import { Sketch } from './sketch';
import { distanceText, text } from './texts';

export class Measure {
  private points: Position[] = [];
  private readonly bar = element('div', 'measure-bar control');
  private readonly result = element('output', '');

  constructor(private readonly map: L.Map, private readonly sketch: Sketch) {
    this.bar.hidden = true;
    map.getContainer().append(this.bar);
    map.on('mousemove', (event: L.MouseEventLike) => this.show(event.latlng.wrap()));
  }

  get isActive(): boolean {
    return !this.bar.hidden;
  }

  start(from?: Position): void {
    this.points = from ? [from] : [];
    this.bar.replaceChildren(this.result, iconButton('close', text('measureEnd'), () => this.end()));
    this.bar.hidden = false;
    this.map.getContainer().classList.add('is-measuring');
    this.show();
  }

  add(position: Position): void {
    this.points.push(position);
    this.show();
  }

  end(): void {
    this.bar.hidden = true;
    this.map.getContainer().classList.remove('is-measuring');
    this.sketch.clear();
  }

  private show(pointer?: Position): void {
    if (!this.isActive) return;
    const lines = [{ points: this.points, isDashed: false }];
    const last = this.points[this.points.length - 1];
    if (last && pointer) lines.push({ points: [last, pointer], isDashed: true });
    this.sketch.show(lines);
    const all = last && pointer ? [...this.points, pointer] : this.points;
    let metres = 0;
    for (let i = 1; i < all.length; i++) {
      metres += L.latLng(all[i - 1]!.lat, all[i - 1]!.lng).distanceTo(L.latLng(all[i]!.lat, all[i]!.lng));
    }
    this.result.value = this.points.length === 0
      ? text('measureHint') : distanceText(metres, ask(() => program.Settings.DistMiles, false));
  }
}
