// Light lines over the map that follow the pointer: what a drag would make, and measuring.

import type * as L from 'leaflet';
import { Position } from './external';
import { worldX, worldY } from './mercator';
import { OverlayCanvas } from './overlay_canvas';
import { palette } from './palette';

export interface SketchLine {
  points: Position[];
  isDashed: boolean;
  colour?: string;
}

export class Sketch {
  private lines: SketchLine[] = [];
  private readonly canvas: OverlayCanvas;

  constructor(map: L.Map) {
    this.canvas = new OverlayCanvas(map, 'sketch', ({ context, scale, left, top }) => {
      context.lineCap = 'round';
      context.lineJoin = 'round';
      for (const line of this.lines) {
        context.beginPath();
        for (const point of line.points) {
          context.lineTo(worldX(point.lng) * scale - left, worldY(point.lat) * scale - top);
        }
        context.setLineDash(line.isDashed ? [6, 6] : []);
        context.strokeStyle = palette.wayCasing;
        context.lineWidth = 5;
        context.stroke();
        context.strokeStyle = line.colour ?? palette.accent;
        context.lineWidth = 3;
        context.stroke();
      }
      context.setLineDash([]);
    });
  }

  show(lines: SketchLine[]): void {
    this.lines = lines;
    this.canvas.invalidate();
  }

  clear(): void {
    this.show([]);
  }
}
