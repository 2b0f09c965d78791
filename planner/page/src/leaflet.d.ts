// The part of Leaflet 1.7 that the page uses.
declare module 'leaflet' {
  export class Point {
    x: number;
    y: number;
    subtract(other: Point): Point;
    multiplyBy(factor: number): Point;
    add(other: Point): Point;
    distanceTo(other: Point): number;
  }
  export class LatLng {
    lat: number;
    lng: number;
    wrap(): LatLng;
    distanceTo(other: LatLng): number;
  }
  export type LatLngLike = LatLng | { lat: number; lng: number } | [number, number];
  export class LatLngBounds {
    extend(point: LatLngLike): this;
    isValid(): boolean;
    contains(point: LatLngLike): boolean;
  }
  export interface MouseEventLike {
    latlng: LatLng;
    containerPoint: Point;
    originalEvent: MouseEvent;
  }
  export interface ZoomAnimation {
    center: LatLng;
    zoom: number;
  }
  export interface MapOptions {
    zoomControl?: boolean;
    attributionControl?: boolean;
    worldCopyJump?: boolean;
    minZoom?: number;
    maxZoom?: number;
    maxBounds?: [[number, number], [number, number]];
    maxBoundsViscosity?: number;
    tap?: boolean;
    zoomSnap?: number;
    wheelPxPerZoomLevel?: number;
    keyboard?: boolean;
  }
  export class Handler {
    enable(): void;
    disable(): void;
  }
  export class Map {
    constructor(element: HTMLElement, options: MapOptions);
    dragging: Handler;
    setView(center: LatLngLike, zoom: number, options?: { animate?: boolean }): this;
    fitBounds(bounds: LatLngBounds, options?: {
      padding?: [number, number];
      maxZoom?: number;
      animate?: boolean;
    }): this;
    panTo(center: LatLngLike, options?: { animate?: boolean }): this;
    panBy(offset: [number, number], options?: { animate?: boolean }): this;
    zoomIn(): this;
    zoomOut(): this;
    getZoom(): number;
    getMinZoom(): number;
    getMaxZoom(): number;
    setMaxZoom(zoom: number): this;
    getCenter(): LatLng;
    getBounds(): LatLngBounds;
    getSize(): Point;
    getPanes(): { overlayPane: HTMLElement };
    getContainer(): HTMLElement;
    project(point: LatLngLike, zoom: number): Point;
    unproject(point: Point, zoom: number): LatLng;
    getPixelBounds(): { min: Point; max: Point };
    getZoomScale(to: number, from: number): number;
    getPixelOrigin(): Point;
    latLngToContainerPoint(point: LatLngLike): Point;
    containerPointToLatLng(point: Point | [number, number]): LatLng;
    containerPointToLayerPoint(point: Point | [number, number]): Point;
    on(events: string, handler: (event: never) => void): this;
    off(events: string, handler: (event: never) => void): this;
    addLayer(layer: Layer): this;
    removeLayer(layer: Layer): this;
    hasLayer(layer: Layer): boolean;
    invalidateSize(): this;
  }
  export class Layer {
    addTo(map: Map): this;
    remove(): this;
    on(events: string, handler: (event: never) => void): this;
    off(events: string, handler: (event: never) => void): this;
  }
  export interface Coords {
    x: number;
    y: number;
    z: number;
  }
  export class GridLayer extends Layer {
    constructor(options?: Record<string, unknown>);
    getTileSize(): Point;
    redraw(): this;
    protected createTile(coords: Coords, done: (error: Error | null, tile: HTMLElement) => void): HTMLElement;
  }
  export class TileLayer extends GridLayer {
    constructor(template: string, options?: Record<string, unknown>);
  }
  export function point(x: number, y: number): Point;
  export function latLng(lat: number, lng: number): LatLng;
  export function latLngBounds(points: LatLngLike[]): LatLngBounds;
  export const DomUtil: {
    setTransform(element: HTMLElement, offset: Point, scale?: number): void;
    setPosition(element: HTMLElement, point: Point): void;
  };
}
