// Names of countries and towns on the outline map, as many as there is room for.

import { Frame, worldCopies } from './overlay_canvas';
import { labelBreak, paintLabel } from './label_painter';
import type { LabelRoom } from './label_room';
import type { Country } from './outline_data';
import { palette } from './palette';
import { language } from './texts';
import type { Town } from './towns';

const kTownFont = '12px system-ui, sans-serif';
const kLargeTownFont = '500 13px system-ui, sans-serif';
const kCountryFont = '600 12px system-ui, sans-serif';
const kLastCountryZoom = 6;
/** How wide a country must be beside its name: most are longer in some direction than in others. */
const kCountryRoom = 0.7;
/** Of the inhabitants, in thousands, from which a town is large. */
const kLargeTown = 500;
/** Least population in thousands of a town that is shown, by zoom. */
const kLeastPopulation = [8000, 5000, 4000, 2500, 1200, 500, 200, 80, 30, 10, 0];

export class GroundLabels {
  private names = new Map<string, string>();
  private namesLanguage = '';

  constructor(private readonly countries: Country[], private readonly towns: Town[]) {}

  *paint(frame: Frame, room: LabelRoom): Generator<void> {
    for (const copy of worldCopies(frame.view)) {
      yield* this.paintCountries(frame, copy, room);
      yield* this.paintTowns(frame, copy, room);
    }
  }

  private *paintCountries(frame: Frame, copy: number, room: LabelRoom): Generator<void> {
    if (frame.zoom > kLastCountryZoom || frame.zoom < 2) return;
    frame.context.font = kCountryFont;
    const pixelsPerDegree = frame.scale / 360;
    for (const country of this.countries) {
      const name = this.nameOf(country.code).toLocaleUpperCase(language());
      const width = frame.context.measureText(name).width;
      if (country.size * pixelsPerDegree < width * kCountryRoom) continue;
      const x = (country.x + copy) * frame.scale - frame.left;
      const y = country.y * frame.scale - frame.top;
      if (!isSeen(frame, x, y)) continue;
      const box = { left: x - width / 2 - 6, right: x + width / 2 + 6, top: y - 9, bottom: y + 9 };
      if (room.take(box)) paintLabel(frame.context, name, x - width / 2, y, palette.country);
      yield* labelBreak();
    }
  }

  private *paintTowns(frame: Frame, copy: number, room: LabelRoom): Generator<void> {
    const least = kLeastPopulation[Math.min(Math.floor(frame.zoom), kLeastPopulation.length - 1)]!;
    const { context } = frame;
    for (const town of this.towns) {
      if (town.population < least) return;
      const x = (town.x + copy) * frame.scale - frame.left;
      const y = town.y * frame.scale - frame.top;
      if (!isSeen(frame, x, y)) continue;
      context.font = town.population >= kLargeTown ? kLargeTownFont : kTownFont;
      const width = context.measureText(town.name).width;
      // To the right of its dot, or where there is no room to the left.
      const left = [x + 6, x - 6 - width].find((each) => room.take({
        left: Math.min(x - 5, each - 3), right: Math.max(x + 5, each + width + 3), top: y - 9, bottom: y + 9,
      }));
      if (left === undefined) continue;
      context.beginPath();
      context.arc(x, y, 2.5, 0, 2 * Math.PI);
      context.fillStyle = palette.label;
      context.fill();
      paintLabel(context, town.name, left, y, palette.label);
      yield* labelBreak();
    }
  }

  private nameOf(code: string): string {
    if (this.namesLanguage !== language()) {
      this.namesLanguage = language();
      this.names = new Map();
    }
    let name = this.names.get(code);
    if (name === undefined) {
      name = new Intl.DisplayNames([language()], { type: 'region' }).of(code) ?? code;
      this.names.set(code, name);
    }
    return name;
  }
}

function isSeen(frame: Frame, x: number, y: number): boolean {
  return x >= -40 && y >= -20 && x <= frame.width + 40 && y <= frame.height + 20;
}
