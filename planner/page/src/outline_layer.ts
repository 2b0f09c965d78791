// Land, lakes and borders as map tiles that are drawn here and need no server.

import * as L from 'leaflet';
import { Outline, World } from './outline_data';
import { palette } from './palette';

const kTileSize = 256;
/** Borders are distracting when whole continents are on the screen: there they are thin lines. */
const kFirstBorderZoom = 2;
const kFirstBrokenBorderZoom = 4;

/** How long tiles are drawn in one frame, in milliseconds. */
const kDrawTime = 4;

export class OutlineLayer extends L.GridLayer {
  private readonly waiting: (() => void)[] = [];

  constructor(private readonly world: World) {
    super({ noWrap: false, updateWhenZooming: false, keepBuffer: 3, className: 'outline' });
  }

  protected override createTile(coords: L.Coords, done: (error: Error | null, tile: HTMLElement) => void): HTMLElement {
    const tile = document.createElement('canvas');
    const ratio = Math.max(1, window.devicePixelRatio || 1);
    tile.width = tile.height = Math.round(kTileSize * ratio);
    this.waiting.push(() => {
      // It may have left the map again.
      if (!tile.isConnected) return;
      const context = tile.getContext('2d', { alpha: false });
      if (context) this.draw(context, coords, tile.width);
      done(null, tile);
    });
    if (this.waiting.length === 1) requestAnimationFrame(() => this.drawWaiting());
    return tile;
  }

  // A row of tiles drawn at once would hold up the map.
  private drawWaiting(): void {
    const end = performance.now() + kDrawTime;
    let drawn = 0;
    while (drawn < this.waiting.length && (drawn === 0 || performance.now() < end)) this.waiting[drawn++]!();
    this.waiting.splice(0, drawn);
    if (this.waiting.length > 0) requestAnimationFrame(() => this.drawWaiting());
  }

  private draw(context: CanvasRenderingContext2D, coords: L.Coords, size: number): void {
    const tiles = 2 ** coords.z;
    const scale = tiles * size;
    const left = (((coords.x % tiles) + tiles) % tiles) / tiles;
    const top = coords.y / tiles;
    const margin = 4 / scale;
    const shows = (outline: Outline, turn: number): boolean =>
      outline.right + turn >= left - margin && outline.left + turn <= left + 1 / tiles + margin &&
      outline.bottom >= top - margin && outline.top <= top + 1 / tiles + margin;
    // What crosses the edge of the world is seen at both of its ends.
    const forEach = (outlines: Outline[], draw: (outline: Outline) => void): void => {
      for (const turn of [-1, 0, 1]) {
        context.setTransform(scale, 0, 0, scale, (turn - left) * scale, -top * scale);
        outlines.filter((outline) => shows(outline, turn)).forEach(draw);
      }
    };

    context.fillStyle = palette.sea;
    context.fillRect(0, 0, size, size);
    context.lineJoin = 'round';
    const fill = (outlines: Outline[], colour: string): void => {
      context.fillStyle = colour;
      context.strokeStyle = palette.coast;
      context.lineWidth = size / kTileSize / scale;
      forEach(outlines, (outline) => {
        context.fill(outline.path);
        context.stroke(outline.shore);
      });
    };
    fill(this.world.land, palette.land);
    fill(this.world.lakes, palette.sea);
    if (coords.z < kFirstBorderZoom) return;
    context.strokeStyle = palette.border;
    const pixel = size / kTileSize / scale;
    const isBroken = coords.z >= kFirstBrokenBorderZoom;
    context.lineWidth = (isBroken ? 1.2 : 0.6) * pixel;
    context.setLineDash(isBroken ? [6 * pixel, 3 * pixel] : []);
    forEach(this.world.borders, (border) => context.stroke(border.path));
  }
}
