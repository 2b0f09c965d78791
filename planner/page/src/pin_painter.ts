// The looks of pins: numbered discs for stops, rings for what was found, stars for favourites,
// diamonds for points of interest.

import { Pin, PinList, kFavourites, kItinerary, kSearchResults } from './pin_list';
import { Frame, worldCopies } from './overlay_canvas';
import type { Lists } from './lists';
import { DiscRoom } from './disc_room';
import { LabelRoom, Rectangle } from './label_room';
import { labelBreak, paintLabel } from './label_painter';
import { palette } from './palette';

/** Radius of a stop's disc, in pixels. */
export const kDiscRadius = 12;
const kDotRadius = 4;
const kNameFont = '500 12px system-ui, sans-serif';
/** By the count of digits: what fits into a disc. */
const kNumberFonts = ['600 12px system-ui, sans-serif', '600 12px system-ui, sans-serif',
  '600 10px system-ui, sans-serif', '600 8px system-ui, sans-serif'];
/** So many pins on the screen are a crowd, in which only some are more than dots. */
const kCrowd = 300;
/** More dots on the screen are small squares. */
const kMostRoundDots = 1000;
/** So many are drawn in one frame. */
const kDotsInStep = 4000;
const kDiscsInStep = 200;
/** Names are shown up to so many pins on the screen. */
const kMostNames = 400;

/** A pin on the canvas. */
export interface PlacedPin {
  pin: Pin;
  index: number;
  x: number;
  y: number;
  isSelected: boolean;
}

export interface PinStyle {
  showsNumbers: boolean;
}

/** Draws the pins of a list and takes what they cover from `room`; gives those that may be named. */
export function* paintMarks(frame: Frame, lists: Lists, list: PinList, style: PinStyle,
                            room: LabelRoom): Generator<void, PlacedPin[]> {
  const selected = lists.selected?.list === list.id ? lists.selected.index : -1;
  const seen = seenPins(frame, lists, list);
  const count = seen.reduce((sum, { indices }) => sum + indices.length, 0);
  const discs: PlacedPin[] = [];
  // Where discs would cover each other, the first of them stands for all; the others are dots. They
  // may be many thousands: no object is made for each of them.
  const crowd = new DiscRoom(2 * kDiscRadius * (count > kCrowd ? 2 : 0.8), frame);
  const dots: number[] = [];
  const place = (index: number, copy: number): void => {
    const pin = list.pins[index]!;
    const isSelected = index === selected;
    const x = (pin.x + copy) * frame.scale - frame.left;
    const y = pin.y * frame.scale - frame.top;
    if (crowd.take(x, y) || isSelected) {
      discs.push({ pin, index, x, y, isSelected });
    } else {
      dots.push(x, y);
      room.occupyDot(x, y);
    }
  };
  for (const { copy, indices } of seen) if (indices.includes(selected)) place(selected, copy);
  for (const { copy, indices } of seen) {
    for (const index of indices) if (index !== selected) place(index, copy);
  }
  yield* paintDots(frame.context, dots, colourOf(list.id));
  const hasShadows = count <= kCrowd;
  for (let i = discs.length - 1; i >= 0; i--) {
    paintMark(frame.context, list.id, discs[i]!, style, hasShadows);
    room.occupy(boxAround(discs[i]!, kDiscRadius + 2));
    if (i > 0 && i % kDiscsInStep === 0) yield;
  }
  return discs;
}

/** Writes the names of pins as far as there is room for them, and not where there are too many. */
export function* paintNames(frame: Frame, placed: PlacedPin[], room: LabelRoom): Generator<void> {
  if (placed.length > kMostNames) return;
  for (const place of placed) {
    paintName(frame.context, place, room);
    yield* labelBreak();
  }
}

/** The pins that a frame may show, in their order, for each copy of the world. */
function seenPins(frame: Frame, lists: Lists, list: PinList): { copy: number; indices: Uint32Array }[] {
  return worldCopies(frame.view).map((copy) => {
    const box = { ...frame.view, left: frame.view.left - copy, right: frame.view.right - copy };
    const indices: number[] = [];
    lists.visitPins(list, box, (index) => indices.push(index));
    // Numbers of their own kind are sorted many times faster than objects.
    return { copy, indices: Uint32Array.from(indices).sort() };
  });
}

function boxAround(place: PlacedPin, reach: number): Rectangle {
  return { left: place.x - reach, right: place.x + reach, top: place.y - reach, bottom: place.y + reach };
}

function colourOf(list: number): string {
  if (list === kItinerary) return palette.accent;
  if (list === kSearchResults) return palette.search;
  return list === kFavourites ? palette.favourite : palette.poi;
}

// Discs of many thousand dots would take longer to draw than the map may stand still.
function* paintDots(context: CanvasRenderingContext2D, dots: number[], colour: string): Generator<void> {
  if (dots.length <= 2 * kMostRoundDots) {
    for (let i = 0; i < dots.length; i += 2) paintDot(context, dots[i]!, dots[i + 1]!, colour);
    return;
  }
  context.fillStyle = colour;
  // On whole pixels, whose edges need not be smoothed.
  for (let i = 0; i < dots.length; i += 2) {
    context.fillRect(Math.round(dots[i]!) - 2, Math.round(dots[i + 1]!) - 2, 4, 4);
    if (i > 0 && i % (2 * kDotsInStep) === 0) yield;
  }
  yield;
}

function paintDot(context: CanvasRenderingContext2D, x: number, y: number, colour: string): void {
  context.beginPath();
  context.arc(x, y, kDotRadius, 0, 2 * Math.PI);
  context.fillStyle = colour;
  context.fill();
  context.lineWidth = 1;
  context.strokeStyle = palette.panel;
  context.stroke();
}

function paintMark(context: CanvasRenderingContext2D, list: number, place: PlacedPin,
                   style: PinStyle, hasShadow: boolean): void {
  const stamp = stampOf(list, place.isSelected, hasShadow, context.getTransform().a);
  context.drawImage(stamp, place.x - kStampReach, place.y - kStampReach, 2 * kStampReach, 2 * kStampReach);
  if (list === kItinerary) paintNumber(context, place, style);
}

/** Half the size of a stamp: a disc, the ring of the selected one, and the shadow. */
const kStampReach = kDiscRadius + 8;

const stamps = new Map<string, HTMLCanvasElement>();

// The shape of a mark, drawn once: shadows of three hundred discs take longer than a frame may.
function stampOf(list: number, isSelected: boolean, hasShadow: boolean, ratio: number): HTMLCanvasElement {
  const key = [list, isSelected, hasShadow, ratio, colourOf(list), palette.panel].join(' ');
  let stamp = stamps.get(key);
  if (!stamp) {
    stamp = document.createElement('canvas');
    stamp.width = stamp.height = Math.ceil(2 * kStampReach * ratio);
    const context = stamp.getContext('2d')!;
    context.scale(stamp.width / (2 * kStampReach), stamp.height / (2 * kStampReach));
    paintShape(context, list, isSelected, hasShadow);
    stamps.set(key, stamp);
  }
  return stamp;
}

function paintShape(context: CanvasRenderingContext2D, list: number, isSelected: boolean,
                    hasShadow: boolean): void {
  context.translate(kStampReach, kStampReach);
  context.save();
  if (hasShadow) {
    context.shadowColor = 'rgba(0, 0, 0, 0.35)';
    context.shadowBlur = 4;
    context.shadowOffsetY = 1;
  }
  tracePath(context, list);
  const colour = colourOf(list);
  context.fillStyle = isSelected ? colour : palette.panel;
  context.fill();
  context.restore();
  context.lineWidth = 2;
  context.strokeStyle = isSelected ? palette.panel : colour;
  context.stroke();
  if (isSelected) {
    context.lineWidth = 1.5;
    context.strokeStyle = colour;
    context.beginPath();
    context.arc(0, 0, kDiscRadius + 2.5, 0, 2 * Math.PI);
    context.stroke();
  } else if (list === kSearchResults) {
    paintDot(context, 0, 0, colour);
  }
}

function tracePath(context: CanvasRenderingContext2D, list: number): void {
  context.beginPath();
  if (list === kItinerary || list === kSearchResults) {
    context.arc(0, 0, list === kItinerary ? kDiscRadius : kDiscRadius - 3, 0, 2 * Math.PI);
  } else if (list === kFavourites) {
    for (let corner = 0; corner < 10; corner++) {
      const radius = corner % 2 === 0 ? kDiscRadius : kDiscRadius * 0.48;
      const angle = (Math.PI * corner) / 5 - Math.PI / 2;
      context.lineTo(radius * Math.cos(angle), radius * Math.sin(angle));
    }
  } else {
    const reach = kDiscRadius - 1;
    context.moveTo(0, -reach);
    context.lineTo(reach, 0);
    context.lineTo(0, reach);
    context.lineTo(-reach, 0);
  }
  context.closePath();
}

function paintNumber(context: CanvasRenderingContext2D, place: PlacedPin, style: PinStyle): void {
  context.fillStyle = place.isSelected ? palette.onAccent : palette.accent;
  if (!style.showsNumbers) {
    context.beginPath();
    context.arc(place.x, place.y, kDotRadius, 0, 2 * Math.PI);
    context.fill();
    return;
  }
  const number = String(place.index + 1);
  context.font = kNumberFonts[Math.min(number.length, kNumberFonts.length) - 1]!;
  context.textAlign = 'center';
  context.textBaseline = 'middle';
  context.fillText(number, place.x, place.y + 0.5);
}

// The name stands to the right, or where something else stands there to the left, below or above.
function paintName(context: CanvasRenderingContext2D, place: PlacedPin, room: LabelRoom): void {
  const name = shortened(place.pin.name);
  if (name === '') return;
  context.font = kNameFont;
  const width = context.measureText(name).width;
  const gap = kDiscRadius + 6;
  const places: [number, number][] = [
    [place.x + gap, place.y], [place.x - gap - width, place.y],
    [place.x - width / 2, place.y + gap + 6], [place.x - width / 2, place.y - gap - 6],
  ];
  for (const [left, middle] of places) {
    const box = { left: left - 2, right: left + width + 2, top: middle - 8, bottom: middle + 8 };
    if (!room.take(box)) continue;
    paintLabel(context, name, left, middle, palette.text);
    return;
  }
}

const kLongestName = 32;

function shortened(name: string): string {
  const letters = Array.from(name);
  return letters.length > kLongestName ? letters.slice(0, kLongestName - 1).join('') + '…' : name;
}
