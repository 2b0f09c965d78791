// A canvas over the map, somewhat larger than it, that moves and scales with the map and is drawn
// anew only when the map has come to rest or has left it. What takes long is drawn step by step on a
// second one, while the old picture stays.

import * as L from 'leaflet';
import type { Rectangle } from './label_room';
import type { Box } from './way';

/** How much of the map's size the canvas is larger at each side. */
const kPadding = 0.25;

/** What is drawn on: pixels of the canvas are `x * scale - left`, `y * scale - top`. */
export interface Frame {
  context: CanvasRenderingContext2D;
  zoom: number;
  scale: number;
  left: number;
  top: number;
  width: number;
  height: number;
  /** The same on the world square. */
  view: Box;
  /** What of it is the map itself, in pixels of the canvas. */
  map: Rectangle;
}

// Each canvas, and each step of one, is drawn in a frame of its own, so that none of the frames takes
// long.
const waiting = new Set<() => void>();

function drawInTurn(draw: () => void): void {
  if (waiting.size === 0) requestAnimationFrame(drawNext);
  waiting.add(draw);
}

function drawNext(): void {
  const [draw] = waiting;
  if (!draw) return;
  waiting.delete(draw);
  if (waiting.size > 0) requestAnimationFrame(drawNext);
  draw();
}

/** Draws a picture; where it yields it may go on in another frame. */
export type Painter = (frame: Frame) => Generator<void> | void;

/** A picture that is being drawn. */
interface Job {
  canvas: HTMLCanvasElement;
  corner: L.Point;
  zoom: number;
  steps: Generator<void> | null;
}

export class OverlayCanvas {
  /** The one that is seen, and the one on which the next picture is drawn. */
  private canvas: HTMLCanvasElement;
  private other: HTMLCanvasElement;
  private corner = L.point(0, 0);
  private zoom = 0;
  private job: Job | null = null;
  private readonly redraw = (): void => this.draw();

  constructor(private readonly map: L.Map, private readonly className: string,
              private readonly paint: Painter) {
    this.canvas = this.makeCanvas();
    this.other = this.makeCanvas();
    this.other.style.visibility = 'hidden';
    map.on('moveend resize viewreset', () => this.rest());
    map.on('move', () => this.drawWhenLeft());
    map.on('zoomanim', (event: L.ZoomAnimation) => this.animate(event));
  }

  /** Draws at the next frame. */
  invalidate(): void {
    this.job = null;
    drawInTurn(this.redraw);
  }

  private makeCanvas(): HTMLCanvasElement {
    const canvas = document.createElement('canvas');
    canvas.className = `overlay leaflet-zoom-animated ${this.className}`;
    canvas.setAttribute('aria-hidden', 'true');
    this.map.getPanes().overlayPane.append(canvas);
    return canvas;
  }

  // Until its turn the old picture stands where it belongs.
  private rest(): void {
    this.putInPlace();
    this.invalidate();
  }

  private putInPlace(): void {
    const growth = this.map.getZoomScale(this.map.getZoom(), this.zoom);
    const place = this.corner.multiplyBy(growth).subtract(this.map.getPixelOrigin());
    L.DomUtil.setTransform(this.canvas, place, growth);
  }

  private drawWhenLeft(): void {
    const size = this.map.getSize();
    const offset = this.map.getPixelBounds().min.subtract(this.corner);
    const isInside = offset.x >= 0 && offset.y >= 0 && offset.x <= 2 * kPadding * size.x &&
      offset.y <= 2 * kPadding * size.y;
    if (!isInside || this.zoom !== this.map.getZoom()) drawInTurn(this.redraw);
  }

  private draw(): void {
    if (this.job?.zoom !== this.map.getZoom()) this.job = null;
    const job = this.job ?? this.begin();
    this.job = job;
    if (!job) return;
    if (job.steps && !job.steps.next().done) drawInTurn(this.redraw);
    else this.show(job);
  }

  private begin(): Job | null {
    const size = this.map.getSize();
    if (size.x === 0 || size.y === 0) return null;
    const canvas = this.other;
    const context = canvas.getContext('2d')!;
    const pad = L.point(Math.round(size.x * kPadding), Math.round(size.y * kPadding));
    const ratio = Math.max(1, window.devicePixelRatio || 1);
    const width = size.x + 2 * pad.x;
    const height = size.y + 2 * pad.y;
    const corner = this.map.getPixelBounds().min.subtract(pad);
    const zoom = this.map.getZoom();
    if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
      canvas.width = Math.round(width * ratio);
      canvas.height = Math.round(height * ratio);
      canvas.style.width = `${width}px`;
      canvas.style.height = `${height}px`;
    }
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.clearRect(0, 0, width, height);
    const scale = 256 * 2 ** zoom;
    const { x: left, y: top } = corner;
    const steps = this.paint({
      context, zoom, scale, left, top, width, height,
      view: { left: left / scale, top: top / scale, right: (left + width) / scale,
              bottom: (top + height) / scale },
      map: { left: pad.x, top: pad.y, right: pad.x + size.x, bottom: pad.y + size.y },
    });
    return { canvas, corner, zoom, steps: steps ?? null };
  }

  private show({ canvas, corner, zoom }: Job): void {
    this.job = null;
    this.other = this.canvas;
    this.canvas = canvas;
    this.corner = corner;
    this.zoom = zoom;
    this.putInPlace();
    this.canvas.style.visibility = '';
    this.other.style.visibility = 'hidden';
  }

  private animate(event: L.ZoomAnimation): void {
    const growth = this.map.getZoomScale(event.zoom, this.zoom);
    const half = this.map.getSize();
    const middle = this.map.project(event.center, event.zoom);
    const place: [number, number] = [
      this.corner.x * growth - (middle.x - half.x / 2),
      this.corner.y * growth - (middle.y - half.y / 2),
    ];
    L.DomUtil.setTransform(this.canvas, this.map.containerPointToLayerPoint(place), growth);
  }
}

/** Whole worlds to the right at which a frame shows something: usually only 0. */
export function worldCopies(view: Box): number[] {
  const copies = [];
  for (let copy = Math.floor(view.left); copy <= Math.floor(view.right); copy++) copies.push(copy);
  return copies;
}
