// All that stands over the ground: ways, pins, names.

import type * as L from 'leaflet';
import { sharesInside } from './clip';
import { GroundLabels } from './ground_labels';
import { LabelRoom, Rectangle } from './label_room';
import type { Lists } from './lists';
import { Frame, OverlayCanvas, worldCopies } from './overlay_canvas';
import { palette } from './palette';
import { kItinerary, PinList } from './pin_list';
import { paintMarks, paintNames, PinStyle } from './pin_painter';
import { Box, kDetailZooms, Way } from './way';

/** More points of ways on one screen are drawn with less detail, though not by more than so many
    zooms: ways keep their shape. */
const kMostPoints = 8000;
const kCoarsest = 6;
/** More ways on one screen lie so close that casings would cover them; and with more points than
    so many, casings take longer to draw than the map may stand still. */
const kMostCased = 1000;
const kMostCasedPoints = 4000;
/** Of ways, and of broken lines: so much is drawn in one frame. */
const kPointsInStep = 2000;
const kMissingInStep = 400;
/** The broken line between stops without a way, in pixels: a piece and the gap behind it. */
const kMissingDash = [2, 6];
const kMissingPiece = 8;

export class Scene {
  readonly style: PinStyle = { showsNumbers: true };
  /** False when map tiles with names of their own cover the outline. */
  showsGroundLabels = true;
  private readonly ways: OverlayCanvas;
  private readonly marks: OverlayCanvas;

  constructor(private readonly map: L.Map, private readonly lists: Lists,
              private readonly labels: GroundLabels) {
    this.ways = new OverlayCanvas(map, 'ways', (frame) => paintAllWays(frame, this.lists));
    this.marks = new OverlayCanvas(map, 'marks', (frame) => this.paintMarks(frame));
  }

  invalidate(): void {
    this.marks.invalidate();
    this.ways.invalidate();
  }

  private *paintMarks(frame: Frame): Generator<void> {
    const room = new LabelRoom(frame.map, frame);
    for (const box of this.controls(frame)) room.occupy(box);
    const lists = this.lists.all();
    // All marks keep free of names; the names of the itinerary have the first choice.
    const marks = [];
    for (const list of lists) marks.push(yield* paintMarks(frame, this.lists, list, this.style, room));
    for (const placed of marks.reverse()) yield* paintNames(frame, placed, room);
    if (this.showsGroundLabels) yield* this.labels.paint(frame, room);
  }

  /** What always lies over the map: names below it could not be read. */
  private controls(frame: Frame): Rectangle[] {
    const map = this.map.getContainer().getBoundingClientRect();
    return [...document.querySelectorAll('.buttons, .credit, .hint, .update')]
      .map((control) => control.getBoundingClientRect())
      .filter(({ width }) => width > 0)
      .map(({ left, top, right, bottom }) => ({
        left: left - map.left + frame.map.left - 4, right: right - map.left + frame.map.left + 4,
        top: top - map.top + frame.map.top - 4, bottom: bottom - map.top + frame.map.top + 4,
      }));
  }
}

function* paintAllWays(frame: Frame, lists: Lists): Generator<void> {
  for (const list of lists.all()) yield* paintWays(frame, list);
}

function* paintWays(frame: Frame, list: PinList): Generator<void> {
  const { context } = frame;
  for (const copy of worldCopies(frame.view)) {
    if (list.id === kItinerary) yield* paintMissing(frame, list, copy);
    const byColour = new Map<string, Way[]>();
    for (const way of list.ways) {
      if (!(way instanceof Way) || !isSeen(frame, way, copy)) continue;
      const colour = way.colour ?? palette.way;
      const same = byColour.get(colour);
      if (same) same.push(way);
      else byColour.set(colour, [way]);
    }
    const ways = [...byColour.values()].flat();
    const { detail, points } = detailFor(frame, ways, copy);
    const isCrowd = ways.length > kMostCased || points > kMostCasedPoints;
    const passes = isCrowd ? [[1, 3]] : [[0, 7], [1, 4]];
    context.lineJoin = isCrowd ? 'bevel' : 'round';
    context.lineCap = isCrowd ? 'butt' : 'round';
    let drawn = 0;
    for (const [pass, width] of passes) {
      for (const [colour, same] of byColour) {
        for (const portion of portionsOf(same, detail, shiftedView(frame, copy))) {
          context.beginPath();
          traceWays(frame, portion.ways, detail, copy);
          context.strokeStyle = pass === 0 ? palette.wayCasing : colour;
          context.lineWidth = width!;
          context.stroke();
          drawn += portion.points;
          if (drawn < kPointsInStep) continue;
          drawn = 0;
          yield;
        }
      }
    }
  }
}

/** The ways in portions that can be drawn in one frame. */
function portionsOf(ways: Way[], detail: number, view: Box): { ways: Way[]; points: number }[] {
  const portions: { ways: Way[]; points: number }[] = [];
  let points = kPointsInStep;
  for (const way of ways) {
    if (points >= kPointsInStep) {
      portions.push({ ways: [], points: 0 });
      points = 0;
    }
    const portion = portions[portions.length - 1]!;
    portion.ways.push(way);
    points = portion.points += way.pointsIn(detail, view);
  }
  return portions;
}

function isSeen(frame: Frame, way: Way, copy: number): boolean {
  return way.box.left + copy <= frame.view.right && way.box.right + copy >= frame.view.left &&
    way.box.top <= frame.view.bottom && way.box.bottom >= frame.view.top;
}

/** The zoom whose detail is enough for so many ways on one screen, and about how many points these
    then have. */
function detailFor(frame: Frame, ways: Way[], copy: number): { detail: number; points: number } {
  const view = shiftedView(frame, copy);
  const pointsAt = (zoom: number): number => ways.reduce((sum, way) => sum + way.pointsIn(zoom, view), 0);
  let detail = Math.min(Math.ceil(frame.zoom), kDetailZooms);
  let points = pointsAt(detail);
  while (detail > 0 && detail > frame.zoom - kCoarsest && points > kMostPoints) points = pointsAt(--detail);
  return { detail, points };
}

function shiftedView(frame: Frame, copy: number): Box {
  return { ...frame.view, left: frame.view.left - copy, right: frame.view.right - copy };
}

// A way that begins where the one before has ended goes on with its line, for each end of a line
// takes as long to draw as many points.
function traceWays(frame: Frame, ways: Way[], detail: number, copy: number): void {
  const { context, scale, left, top } = frame;
  const view = shiftedView(frame, copy);
  let lastX = NaN;
  let lastY = NaN;
  const draw = (x: number, y: number, start: boolean): void => {
    const px = (x + copy) * scale - left;
    const py = y * scale - top;
    if (!start) context.lineTo(px, py);
    else if (Math.abs(px - lastX) <= 1 && Math.abs(py - lastY) <= 1) return;
    else context.moveTo(px, py);
    lastX = px;
    lastY = py;
  };
  for (const way of ways) way.visit(detail, view, draw);
}

// Stops without a way between them are joined by a thin broken line, so that their order shows. It
// is broken where it can be seen alone: thousands of pieces beyond the edge would take long.
function* paintMissing(frame: Frame, list: PinList, copy: number): Generator<void> {
  const { context, scale, left, top } = frame;
  const draw = (): void => {
    context.setLineDash(kMissingDash);
    context.strokeStyle = palette.wayMissing;
    context.lineWidth = 2;
    context.stroke();
    context.setLineDash([]);
    context.beginPath();
  };
  const edge = { left: -2, top: -2, right: frame.width + 2, bottom: frame.height + 2 };
  let count = 0;
  context.beginPath();
  for (let i = 1; i < list.pins.length; i++) {
    const from = list.pins[i - 1]!;
    const to = list.pins[i]!;
    if (list.ways[i] instanceof Way || Number.isNaN(from.x) || Number.isNaN(to.x)) continue;
    const [x, y] = [(from.x + copy) * scale - left, from.y * scale - top];
    const [dx, dy] = [(to.x - from.x) * scale, (to.y - from.y) * scale];
    const seen = sharesInside(x, y, x + dx, y + dy, edge);
    if (!seen) continue;
    // From the beginning of a piece, so that the pieces stay where they are when the map is moved.
    const pieces = Math.hypot(dx, dy) / kMissingPiece;
    const begin = pieces > 0 ? Math.floor(seen[0] * pieces) / pieces : 0;
    context.moveTo(x + begin * dx, y + begin * dy);
    context.lineTo(x + seen[1] * dx, y + seen[1] * dy);
    if (++count % kMissingInStep !== 0) continue;
    draw();
    yield;
  }
  draw();
}
