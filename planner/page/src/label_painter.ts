// Texts with a halo. Drawn once each and kept: the halo is the most expensive thing on the map. So
// only some new ones are drawn in one frame.

import { palette } from './palette';

interface Picture {
  canvas: HTMLCanvasElement;
  /** In pixels of the page. */
  width: number;
}

const kHalo = 2;
const kHeight = 20;
/** More pictures than any screen shows; then all are forgotten. */
const kMostPictures = 1000;
const kNewInStep = 16;

const pictures = new Map<string, Picture>();
let newInStep = 0;

/** Between labels: leaves the others to the next frame when enough new ones have been drawn. */
export function* labelBreak(): Generator<void> {
  if (newInStep < kNewInStep) return;
  yield;
  newInStep = 0;
}

/** Draws a text in the context's font. It begins at `left` and has its middle at `middle`. */
export function paintLabel(context: CanvasRenderingContext2D, label: string, left: number,
                           middle: number, colour: string): void {
  const { canvas, width } = pictureOf(context.font, label, colour, context.getTransform().a);
  context.drawImage(canvas, Math.round(left - kHalo), Math.round(middle - kHeight / 2), width, kHeight);
}

function pictureOf(font: string, label: string, colour: string, ratio: number): Picture {
  const key = [font, label, colour, palette.halo, ratio].join('\n');
  const kept = pictures.get(key);
  if (kept) return kept;
  newInStep++;
  if (pictures.size >= kMostPictures) pictures.clear();
  const picture = draw(font, label, colour, ratio);
  pictures.set(key, picture);
  return picture;
}

function draw(font: string, label: string, colour: string, ratio: number): Picture {
  const canvas = document.createElement('canvas');
  const context = canvas.getContext('2d')!;
  context.font = font;
  const width = Math.ceil(context.measureText(label).width) + 2 * kHalo;
  canvas.width = Math.ceil(width * ratio);
  canvas.height = Math.ceil(kHeight * ratio);
  context.scale(canvas.width / width, canvas.height / kHeight);
  // The size took the font away.
  context.font = font;
  context.textBaseline = 'middle';
  context.lineJoin = 'round';
  context.lineWidth = 3;
  context.strokeStyle = palette.halo;
  context.strokeText(label, kHalo, kHeight / 2);
  context.fillStyle = colour;
  context.fillText(label, kHalo, kHeight / 2);
  return { canvas, width };
}
