// The window of a pin: its name to be changed, where it is, how one gets there, and what can be
// done with it.

import type * as L from 'leaflet';
import { element, icon, iconButton, textButton } from './dom';
import { ask, ListPoint, program } from './external';
import type { Lists, PinRef } from './lists';
import { order } from './orders';
import { kFavourites, kItinerary } from './pin_list';
import { Way } from './way';
import { distanceText, durationText, text } from './texts';

export interface SendTarget {
  target: number;
  label: string;
}

export class PinWindow {
  /** Companion programs that the program has found. */
  sendTargets: SendTarget[] = [];
  private readonly box = element('section', 'pin-window control');
  private ref: PinRef | null = null;

  constructor(private readonly map: L.Map, private readonly lists: Lists,
              private readonly announce: (message: string) => void) {
    this.box.setAttribute('role', 'dialog');
    this.box.hidden = true;
    this.box.addEventListener('keydown', (event) => {
      event.stopPropagation();
      if (event.key === 'Escape') this.close(true);
    });
    for (const kind of ['pointerdown', 'mousedown', 'touchstart', 'dblclick', 'wheel', 'contextmenu']) {
      this.box.addEventListener(kind, (event) => event.stopPropagation());
    }
    map.getContainer().append(this.box);
    map.on('move zoom resize', () => this.place());
    map.on('zoomstart', () => this.box.classList.add('is-zooming'));
    map.on('zoomend', () => this.box.classList.remove('is-zooming'));
  }

  get shown(): PinRef | null {
    return this.ref;
  }

  open(ref: PinRef, takesFocus: boolean): void {
    this.ref = ref;
    if (!this.fill()) return;
    this.box.hidden = false;
    this.place();
    if (takesFocus) this.box.querySelector<HTMLElement>('input, button')?.focus();
  }

  /** The lists have changed; what is typed just now stays. */
  update(): void {
    if (!this.ref) return;
    if (!this.lists.pin(this.ref)) this.close(false);
    else if (!this.box.contains(document.activeElement)) this.fill();
    this.place();
  }

  close(returnsFocus: boolean): void {
    if (!this.ref) return;
    this.ref = null;
    this.box.hidden = true;
    if (returnsFocus) this.map.getContainer().focus();
  }

  private fill(): boolean {
    const { ref } = this;
    const point = ref && ask(() => program.GetPoint(ref.list, ref.index), null);
    if (!ref || !point) {
      this.close(false);
      return false;
    }
    this.box.replaceChildren(
      this.heading(ref, point),
      element('p', 'pin-position', ask(() => program.GetStrCoords(point), '')),
      ...comment(point),
      ...this.wayFacts(ref),
      this.actions(ref, point),
    );
    return true;
  }

  private heading(ref: PinRef, point: ListPoint): HTMLElement {
    const name = element('input', 'pin-name');
    name.value = point.address;
    name.setAttribute('aria-label', text('name'));
    name.readOnly = !this.lists.get(ref.list)?.isEditable;
    name.addEventListener('change', () => {
      if (!order(() => program.RenamePoint(ref.list, ref.index, name.value))) name.value = point.address;
    });
    name.addEventListener('keydown', (event) => {
      if (event.key === 'Enter') name.blur();
    });
    const badge = ref.list === kItinerary
      ? element('span', 'pin-badge', String(ref.index + 1))
      : element('span', 'pin-badge is-plain', icon(ref.list === kFavourites ? 'star' : 'place'));
    this.box.setAttribute('aria-label', point.address || text('stopNumber', ref.index + 1));
    return element('header', 'pin-heading', badge, name,
                   iconButton('close', text('close'), () => this.close(true)));
  }

  private wayFacts(ref: PinRef): HTMLElement[] {
    if (ref.list !== kItinerary || ref.index === 0) return [];
    const ways = this.lists.get(kItinerary)!.ways.slice(1, ref.index + 1);
    const known = ways.filter((way): way is Way => way instanceof Way);
    const miles = ask(() => program.Settings.DistMiles, false);
    const last = ways[ways.length - 1];
    const row = (label: string, distance: number, duration: number): HTMLElement =>
      element('div', 'way-fact', element('span', '', label), element('strong', '', distanceText(distance, miles)),
              element('span', '', durationText(duration)));
    const facts = element('div', 'way-facts');
    if (last instanceof Way) facts.append(row(text('fromStopBefore'), last.distance, last.duration));
    if (known.length === ways.length && ref.index > 1) {
      const sum = (of: (way: Way) => number): number => known.reduce((total, way) => total + of(way), 0);
      facts.append(row(text('fromStart'), sum((way) => way.distance), sum((way) => way.duration)));
    }
    if (!(last instanceof Way)) {
      facts.append(textButton('insert', text('calculate'), () => {
        order(() => program.Calculate(kItinerary));
      }));
    }
    return [facts];
  }

  private actions(ref: PinRef, point: ListPoint): HTMLElement {
    const bar = element('div', 'pin-actions');
    if (ref.list !== kFavourites) {
      bar.append(textButton('star', text('addFavourite'), () => {
        const isAdded = order(() => program.AddFavorite(point));
        if (isAdded) this.announce(text('favouriteAdded', point.address));
      }));
    }
    if (ref.list !== kItinerary) {
      bar.append(textButton('plus', text('addStop'), () => {
        order(() => program.AddPoint(kItinerary, point));
      }));
    }
    bar.append(textButton('street', text('streetView'), () => this.streetView(point)));
    for (const { target, label } of this.sendTargets) {
      bar.append(textButton('send', label, () => {
        order(() => program.SendToGps(target, ref.list, ref.index));
      }));
    }
    if (this.lists.get(ref.list)?.isEditable) {
      bar.append(textButton('remove', text('removeStop'), () => {
        this.close(true);
        order(() => program.DeletePoint(ref.list, ref.index));
      }));
    }
    return bar;
  }

  private streetView(point: ListPoint): void {
    const found = ask(() => program.GetStreetViewLocation(point), null);
    if (!found) {
      this.announce(text('noStreetView'));
      return;
    }
    openStreetView(found);
  }

  private place(): void {
    const pin = this.lists.pin(this.ref);
    if (!pin || this.box.hidden) return;
    const at = this.map.latLngToContainerPoint(pin);
    const size = this.map.getSize();
    const { offsetWidth: width, offsetHeight: height } = this.box;
    const isBelow = at.y - height - 24 < 0 && at.y + height + 24 < size.y;
    const left = Math.max(8, Math.min(size.x - width - 8, at.x - width / 2));
    const top = isBelow ? at.y + 22 : at.y - height - 22;
    this.box.classList.toggle('is-below', isBelow);
    this.box.style.transform = `translate(${Math.round(left)}px, ${Math.round(top)}px)`;
    this.box.style.setProperty('--tip', `${Math.round(Math.max(16, Math.min(width - 16, at.x - left)))}px`);
  }
}

function comment(point: ListPoint): HTMLElement[] {
  return point.snippet ? [element('p', 'pin-comment', point.snippet)] : [];
}

/** Opens the street-level view of a place; the program shows it in the user's browser. */
export function openStreetView(at: { lat: number; lng: number }): void {
  const place = `${at.lat.toFixed(6)},${at.lng.toFixed(6)}`;
  location.href = `https://www.google.com/maps/@?api=1&map_action=pano&viewpoint=${place}`;
}
