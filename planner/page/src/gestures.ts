// Mouse, pen and finger: selecting and dragging pins, pulling a new stop out of the way.

import * as L from 'leaflet';
import { insertStop, moveStop } from './edits';
import { ask, Position, program } from './external';
import { Hits, WayHit } from './hits';
import type { Lists, PinRef } from './lists';
import { kItinerary } from './pin_list';
import { RoutePreview } from './route_preview';
import { Sketch, SketchLine } from './sketch';
import { text } from './texts';

/** What moves less, in pixels, is a click. */
const kClickReach = 4;
const kLongPress = 550;

export interface GestureActions {
  openPin(ref: PinRef): void;
  openMenu(position: Position, place: L.Point, pin: PinRef | null): void;
  clickMap(position: Position): void;
  /** A drag begins: windows over the map are in the way. */
  dragBegins(): void;
  announce(message: string): void;
}

type Grip = { kind: 'pin'; ref: PinRef } | { kind: 'way'; hit: WayHit };

export class Gestures {
  private readonly handle = document.createElement('div');
  private readonly ghost = document.createElement('div');
  private readonly preview = new RoutePreview();
  private grip: Grip | null = null;
  private start = L.point(0, 0);
  private isDragging = false;
  private hasHit = false;
  private longPress = 0;

  constructor(private readonly map: L.Map, private readonly lists: Lists, private readonly hits: Hits,
              private readonly sketch: Sketch, private readonly actions: GestureActions) {
    this.handle.className = 'way-handle';
    this.ghost.className = 'drag-ghost';
    const container = map.getContainer();
    container.append(this.handle, this.ghost);
    container.addEventListener('pointerdown', (event) => this.press(event), true);
    container.addEventListener('pointermove', (event) => this.move(event));
    container.addEventListener('pointerup', (event) => this.release(event));
    container.addEventListener('pointercancel', () => this.cancel());
    container.addEventListener('pointerleave', () => this.hideHandle());
    // Before the other keys of the map, for which Escape has a meaning of its own.
    container.addEventListener('keydown', (event) => {
      if (event.key !== 'Escape' || !this.grip) return;
      this.cancel();
      event.stopImmediatePropagation();
    }, true);
    map.on('movestart zoomstart', () => this.hideHandle());
    map.on('click', (event: L.MouseEventLike) => this.click(event));
    map.on('contextmenu', (event: L.MouseEventLike) => this.menu(event.containerPoint));
  }

  private placeOf(event: PointerEvent): L.Point {
    const box = this.map.getContainer().getBoundingClientRect();
    return L.point(event.clientX - box.left, event.clientY - box.top);
  }

  private press(event: PointerEvent): void {
    if (!event.isPrimary || event.button !== 0 || isControl(event.target)) return;
    const place = this.placeOf(event);
    const isFinger = event.pointerType === 'touch';
    this.start = place;
    this.isDragging = false;
    this.grip = this.gripAt(place, isFinger);
    this.hasHit = this.grip?.kind === 'pin';
    if (isFinger) {
      this.longPress = window.setTimeout(() => {
        if (this.isDragging) return;
        this.cancel();
        this.menu(place);
      }, kLongPress);
    }
    // The map must not move with what is dragged.
    if (this.grip) this.map.dragging.disable();
  }

  private gripAt(place: L.Point, isFinger: boolean): Grip | null {
    const ref = this.hits.pinAt(place, isFinger);
    if (ref) return { kind: 'pin', ref };
    const hit = addsStops() ? this.hits.wayAt(place, isFinger) : null;
    return hit ? { kind: 'way', hit } : null;
  }

  private move(event: PointerEvent): void {
    const place = this.placeOf(event);
    if (!this.grip) {
      if (event.buttons === 0 && event.pointerType !== 'touch') this.hover(place);
      else if (place.distanceTo(this.start) > kClickReach) clearTimeout(this.longPress);
      return;
    }
    if (!this.isDragging) {
      if (place.distanceTo(this.start) <= kClickReach) return;
      clearTimeout(this.longPress);
      if (this.grip.kind === 'pin' && !this.lists.get(this.grip.ref.list)?.isEditable) return;
      this.forgetDrag();
      this.isDragging = true;
      this.actions.dragBegins();
      this.map.getContainer().setPointerCapture(event.pointerId);
      this.ghost.classList.add('is-shown');
    }
    this.drag(place);
  }

  private drag(place: L.Point): void {
    this.ghost.style.transform = `translate(${place.x}px, ${place.y}px)`;
    const position = this.positionAt(place);
    this.sketch.show(this.straightLines(position));
    if (this.grip?.kind !== 'pin' || this.grip.ref.list !== kItinerary || !previewsWay()) return;
    this.preview.request(this.grip.ref, position, true, (leg) => {
      if (this.isDragging && leg) this.sketch.show([{ points: leg.points, isDashed: true }]);
    });
  }

  /** From the neighbours to a place, broken: what the drag joins. */
  private straightLines(position: Position): SketchLine[] {
    const grip = this.grip!;
    const index = grip.kind === 'pin' ? grip.ref.index : grip.hit.ref.index;
    const list = grip.kind === 'pin' ? grip.ref.list : kItinerary;
    if (list !== kItinerary) return [];
    const neighbours = grip.kind === 'pin' ? [index - 1, index + 1] : [index - 1, index];
    const [before, after] = neighbours.map((at) => this.lists.pin({ list, index: at }));
    const points = [before, position, after].filter((point): point is NonNullable<typeof point> =>
      point !== undefined && Number.isFinite(point.lat));
    return points.length > 1 ? [{ points, isDashed: true }] : [];
  }

  private release(event: PointerEvent): void {
    clearTimeout(this.longPress);
    const grip = this.grip;
    const wasDragging = this.isDragging;
    const position = this.positionAt(this.placeOf(event));
    const lines = wasDragging ? this.straightLines(position) : [];
    this.endGrip();
    if (!grip) return;
    if (!wasDragging) {
      if (grip.kind === 'pin') this.actions.openPin(grip.ref);
      else insertStop(grip.hit.ref.index, grip.hit.position);
      this.hasHit = true;
    } else if (grip.kind === 'pin') {
      moveStop(grip.ref.list, grip.ref.index, position);
    } else {
      this.dropOnWay(grip.hit.ref, position, lines);
    }
  }

  /** Where ways are calculated by themselves, a place that no way leads through makes no stop. */
  private dropOnWay(ref: PinRef, position: Position, lines: SketchLine[]): void {
    if (!previewsWay()) {
      insertStop(ref.index, position);
      return;
    }
    const stop = this.lists.pin(ref);
    this.sketch.show(lines);
    this.preview.request(ref, position, false, (leg) => {
      this.sketch.clear();
      if (!leg) this.actions.announce(text('wayFailed'));
      else if (this.lists.pin(ref) === stop) insertStop(ref.index, position);
    });
  }

  private cancel(): void {
    clearTimeout(this.longPress);
    if (this.grip) this.hasHit = true;
    this.endGrip();
  }

  private endGrip(): void {
    if (this.isDragging) this.forgetDrag();
    this.grip = null;
    this.isDragging = false;
    this.ghost.classList.remove('is-shown');
    this.map.dragging.enable();
    this.hideHandle();
  }

  // What was asked for the drag before, if that has not been answered yet, no longer counts.
  private forgetDrag(): void {
    this.hasHit = true;
    this.preview.forget();
    this.sketch.clear();
  }

  private click(event: L.MouseEventLike): void {
    const isTaken = this.hasHit || isControl(event.originalEvent.target);
    this.hasHit = false;
    if (isTaken) return;
    const { lat, lng } = event.latlng.wrap();
    this.actions.clickMap({ lat, lng });
  }

  private menu(place: L.Point): void {
    this.actions.openMenu(this.positionAt(place), place, this.hits.pinAt(place, false));
  }

  private hover(place: L.Point): void {
    const isPin = this.hits.pinAt(place, false) !== null;
    const hit = !isPin && addsStops() ? this.hits.wayAt(place, false) : null;
    this.map.getContainer().classList.toggle('is-over-pin', isPin || hit !== null);
    this.handle.classList.toggle('is-shown', hit !== null);
    if (!hit) return;
    const foot = this.map.latLngToContainerPoint(hit.position);
    this.handle.style.transform = `translate(${foot.x}px, ${foot.y}px)`;
  }

  private hideHandle(): void {
    this.handle.classList.remove('is-shown');
    this.map.getContainer().classList.remove('is-over-pin');
  }

  private positionAt(place: L.Point): Position {
    const { lat, lng } = this.map.containerPointToLatLng(place).wrap();
    return { lat, lng };
  }
}

function isControl(target: EventTarget | null): boolean {
  return target instanceof Element && target.closest('.control, .credit') !== null;
}

function addsStops(): boolean {
  return ask(() => program.Settings.AutoAddStep, false);
}

// Questions to a service while a stop is dragged are for those who have it calculate by itself.
function previewsWay(): boolean {
  return ask(() => program.Settings.AutoCalc, false);
}
