// Everything on the map without a mouse. The middle of the map is the pointer.

import type * as L from 'leaflet';
import { moveStop } from './edits';
import { Position, program } from './external';
import type { Lists, PinRef } from './lists';
import { order } from './orders';
import { kItinerary } from './pin_list';
import { Sketch } from './sketch';
import { text } from './texts';

/** What a key moves a stop by, in pixels. */
const kStep = 10;

export interface KeyboardActions {
  openPin(ref: PinRef): void;
  openMenu(position: Position, pin: PinRef | null): void;
  select(ref: PinRef): void;
  addStop(position: Position): void;
  measure(): void;
  fit(): void;
  escape(): void;
  say(message: string): void;
  announce(message: string): void;
}

export class Keyboard {
  private moving: { ref: PinRef; position: Position } | null = null;

  constructor(private readonly map: L.Map, private readonly lists: Lists, private readonly sketch: Sketch,
              private readonly actions: KeyboardActions) {
    const container = map.getContainer();
    // The cross in the middle is for those who point with keys.
    container.addEventListener('pointerdown', () => container.classList.remove('is-keyboard'), true);
    container.addEventListener('keydown', () => container.classList.add('is-keyboard'), true);
    container.addEventListener('keydown', (event) => {
      if (event.target !== container || event.ctrlKey || event.altKey || event.metaKey) return;
      if (!(this.moving ? this.move(event.key) : this.act(event))) return;
      event.preventDefault();
      event.stopImmediatePropagation();
    }, true);
  }

  private act(event: KeyboardEvent): boolean {
    const { selected } = this.lists;
    const middle = this.map.getCenter();
    switch (event.key) {
      case 'PageDown': return this.step(1);
      case 'PageUp': return this.step(-1);
      case 'Enter':
        if (selected) this.actions.openPin(selected);
        return selected !== null;
      case 'Insert':
        this.actions.addStop({ lat: middle.lat, lng: middle.lng });
        return true;
      case 'Delete':
        if (!selected || !this.lists.get(selected.list)?.isEditable) return false;
        order(() => program.DeletePoint(selected.list, selected.index));
        return true;
      case 'm': return this.startMove();
      case 'd':
        this.actions.measure();
        return true;
      case 'f': case 'Home':
        this.actions.fit();
        return true;
      case 'ContextMenu': return this.menu();
      case 'F10': return event.shiftKey && this.menu();
      case 'Escape':
        this.actions.escape();
        return true;
      default: return false;
    }
  }

  private menu(): boolean {
    const { lat, lng } = this.lists.pin(this.lists.selected) ?? this.map.getCenter();
    this.actions.openMenu({ lat, lng }, this.lists.selected);
    return true;
  }

  private step(by: number): boolean {
    const list = this.lists.selected?.list ?? kItinerary;
    const count = this.lists.get(list)?.pins.length ?? 0;
    if (count === 0) return true;
    const from = this.lists.selected?.index ?? (by > 0 ? -1 : count);
    const index = Math.max(0, Math.min(count - 1, from + by));
    this.actions.select({ list, index });
    this.actions.say(text('stopOf', index + 1, count, this.lists.pin({ list, index })?.name ?? ''));
    return true;
  }

  private startMove(): boolean {
    const ref = this.lists.selected;
    const pin = this.lists.pin(ref);
    if (!ref || !pin || !this.lists.get(ref.list)?.isEditable) return false;
    this.moving = { ref, position: { lat: pin.lat, lng: pin.lng } };
    this.actions.announce(text('moving', pin.name));
    return true;
  }

  private move(key: string): boolean {
    const { ref, position } = this.moving!;
    const steps: Record<string, [number, number]> = {
      ArrowLeft: [-kStep, 0], ArrowRight: [kStep, 0], ArrowUp: [0, -kStep], ArrowDown: [0, kStep],
    };
    const step = steps[key];
    if (step) {
      const place = this.map.latLngToContainerPoint(position);
      const { lat, lng } = this.map.containerPointToLatLng([place.x + step[0], place.y + step[1]]).wrap();
      this.moving = { ref, position: { lat, lng } };
      this.sketch.show([{ points: [this.lists.pin(ref)!, { lat, lng }], isDashed: true }]);
      return true;
    }
    if (key !== 'Enter' && key !== 'Escape') return key.length === 1 && key !== '+' && key !== '-';
    this.moving = null;
    this.sketch.clear();
    const isMoved = key === 'Enter' && moveStop(ref.list, ref.index, position);
    this.actions.announce(text(isMoved ? 'moved' : 'notMoved'));
    return true;
  }
}
