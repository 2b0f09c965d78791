// A canvas over the map, somewhat larger than it, that moves and scales with the map and is drawn
// anew only when the map has come to rest or has left it.

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

// Each canvas is drawn in a frame of its own, so that none of the frames takes long.
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

export class OverlayCanvas {
  private readonly canvas = document.createElement('canvas');
  private readonly context = this.canvas.getContext('2d')!;
  private corner = L.point(0, 0);
  private zoom = 0;
  private readonly redraw = (): void => this.draw();

  constructor(private readonly map: L.Map, className: string,
              private readonly paint: (frame: Frame) => void) {
    this.canvas.className = `overlay leaflet-zoom-animated ${className}`;
    this.canvas.setAttribute('aria-hidden', 'true');
    map.getPanes().overlayPane.append(this.canvas);
    map.on('moveend resize viewreset', () => this.rest());
    map.on('move', () => this.drawWhenLeft());
    map.on('zoomanim', (event: L.ZoomAnimation) => this.animate(event));
  }

  /** Draws at the next frame. */
  invalidate(): void {
    drawInTurn(this.redraw);
  }

  // Until its turn the old picture stands where it belongs.
  private rest(): void {
    const growth = this.map.getZoomScale(this.map.getZoom(), this.zoom);
    const place = this.corner.multiplyBy(growth).subtract(this.map.getPixelOrigin());
    L.DomUtil.setTransform(this.canvas, place, growth);
    this.invalidate();
  }

  private drawWhenLeft(): void {
    const size = this.map.getSize();
    const offset = this.map.getPixelBounds().min.subtract(this.corner);
    const isInside = offset.x >= 0 && offset.y >= 0 && offset.x <= 2 * kPadding * size.x &&
      offset.y <= 2 * kPadding * size.y;
    if (!isInside || this.zoom !== this.map.getZoom()) this.invalidate();
  }

  private draw(): void {
    const size = this.map.getSize();
    if (size.x === 0 || size.y === 0) return;
    const pad = L.point(Math.round(size.x * kPadding), Math.round(size.y * kPadding));
    const ratio = Math.max(1, window.devicePixelRatio || 1);
    const width = size.x + 2 * pad.x;
    const height = size.y + 2 * pad.y;
    this.corner = this.map.getPixelBounds().min.subtract(pad);
    this.zoom = this.map.getZoom();
    if (this.canvas.width !== Math.round(width * ratio) ||
        this.canvas.height !== Math.round(height * ratio)) {
      this.canvas.width = Math.round(width * ratio);
      this.canvas.height = Math.round(height * ratio);
      this.canvas.style.width = `${width}px`;
      this.canvas.style.height = `${height}px`;
    }
    L.DomUtil.setTransform(this.canvas, this.map.containerPointToLayerPoint([-pad.x, -pad.y]), 1);
    this.context.setTransform(ratio, 0, 0, ratio, 0, 0);
    this.context.clearRect(0, 0, width, height);
    const scale = 256 * 2 ** this.zoom;
    const { x: left, y: top } = this.corner;
    this.paint({
      context: this.context, zoom: this.zoom, scale, left, top, width, height,
      view: { left: left / scale, top: top / scale, right: (left + width) / scale,
              bottom: (top + height) / scale },
      map: { left: pad.x, top: pad.y, right: pad.x + size.x, bottom: pad.y + size.y },
    });
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
