// The map with all that belongs to it, and what the program can do with it.

import * as L from 'leaflet';
import { element, iconButton } from './dom';
import { addStop, insertStop } from './edits';
import { ask, Position, program } from './external';
import { Gestures } from './gestures';
import { GroundLabels } from './ground_labels';
import { Hits } from './hits';
import { Keyboard } from './keyboard';
import { Layers } from './layers';
import { Lists, PinRef } from './lists';
import { Measure } from './measure';
import { Menu, MenuItem } from './menu';
import { OutlineLayer } from './outline_layer';
import type { World } from './outline_data';
import { onPaletteChange } from './palette';
import { kItinerary } from './pin_list';
import { openStreetView, PinWindow, SendTarget } from './pin_window';
import { Scene } from './scene';
import { Sketch } from './sketch';
import { text } from './texts';
import type { Town } from './towns';

const kFirstView = { center: [30, 10] as [number, number], zoom: 2 };
const kCountryZoom = 6;
/** One stop alone is shown from near, but with what is around it. */
const kClosestFit = 14;

export class PlannerMap {
  readonly lists: Lists;
  readonly pinWindow: PinWindow;
  readonly layers: Layers;
  private readonly map: L.Map;
  private readonly scene: Scene;
  private readonly menu: Menu;
  private readonly measure: Measure;
  private readonly hint = element('p', 'hint');
  private note: HTMLElement | null = null;
  private readonly live = element('div', 'visually-hidden');
  private acceptsClicks = true;

  constructor(container: HTMLElement, world: World, towns: Town[]) {
    this.map = new L.Map(container, {
      zoomControl: false, attributionControl: false, worldCopyJump: true, minZoom: 1, maxZoom: 20,
      maxBounds: [[-88, -Infinity], [88, Infinity]], maxBoundsViscosity: 1, tap: false,
      // A notch of a wheel, which is 100 to 120 pixels, is one zoom.
      wheelPxPerZoomLevel: 120,
    });
    this.map.setView(kFirstView.center, kFirstView.zoom, { animate: false });
    const outline = new OutlineLayer(world);
    outline.addTo(this.map);
    this.lists = new Lists(() => this.changed());
    this.scene = new Scene(this.map, this.lists, new GroundLabels(world.countries, towns));
    const sketch = new Sketch(this.map);
    this.live.setAttribute('aria-live', 'polite');
    this.live.setAttribute('role', 'status');
    const credit = element('p', 'credit');
    container.append(this.live, this.hint, credit);
    const announce = (message: string): void => this.announce(message);
    this.pinWindow = new PinWindow(this.map, this.lists, announce);
    this.menu = new Menu(this.map);
    this.measure = new Measure(this.map, sketch);
    this.layers = new Layers(this.map, credit, 'Natural Earth · GeoNames', (showsTiles) => {
      if (this.scene.showsGroundLabels === !showsTiles) return;
      this.scene.showsGroundLabels = !showsTiles;
      this.scene.invalidate();
    }, announce);
    new Gestures(this.map, this.lists, new Hits(this.map, this.lists), sketch, {
      openPin: (ref) => this.openPin(ref, false),
      openMenu: (position, place, pin) => this.openMenu(position, place, pin),
      clickMap: (position) => this.click(position),
      dragBegins: () => this.pinWindow.close(false),
      announce,
    });
    new Keyboard(this.map, this.lists, sketch, {
      openPin: (ref) => this.openPin(ref, true),
      openMenu: (position, pin) =>
        this.openMenu(position, this.map.latLngToContainerPoint(position), pin),
      select: (ref) => this.select(ref),
      addStop,
      measure: () => this.toggleMeasure(),
      fit: () => this.fit(),
      escape: () => this.escape(),
      say: (message) => this.say(message),
      announce,
    });
    onPaletteChange(() => {
      outline.redraw();
      this.scene.invalidate();
    });
    new ResizeObserver(() => this.map.invalidateSize()).observe(container);
  }

  /** Texts have arrived: names everything in the user's language. */
  build(): void {
    const container = this.map.getContainer();
    container.setAttribute('role', 'application');
    container.setAttribute('aria-label', text('map'));
    container.setAttribute('aria-description', text('mapKeys'));
    container.querySelectorAll('.buttons').forEach((buttons) => buttons.remove());
    const top = element('div', 'buttons control is-top',
      iconButton('layers', text('layers'), () => this.layers.toggle()),
      iconButton('fit', text('showAll'), () => this.fit()),
      iconButton('measure', text('measure'), () => this.toggleMeasure()));
    const bottom = element('div', 'buttons control is-bottom',
      iconButton('plus', text('zoomIn'), () => this.map.zoomIn()),
      iconButton('minus', text('zoomOut'), () => this.map.zoomOut()));
    for (const bar of [top, bottom]) {
      for (const kind of ['pointerdown', 'mousedown', 'dblclick', 'click']) {
        bar.addEventListener(kind, (event) => event.stopPropagation());
      }
    }
    container.append(top, bottom);
    this.layers.fill();
    this.readSettings();
  }

  readSettings(): void {
    this.scene.style.showsNumbers = ask(() => program.Settings.DisplayNumber, true);
    this.changed();
  }

  setSendTargets(targets: SendTarget[]): void {
    this.pinWindow.sendTargets = targets;
  }

  setCenter(center: Position): void {
    this.map.setView(center, kCountryZoom, { animate: false });
  }

  setClicks(enabled: boolean): void {
    this.acceptsClicks = enabled;
    this.map.getContainer().classList.toggle('accepts-clicks', enabled);
    this.changed();
  }

  /** Shows the itinerary, or without one all other pins. */
  fit(): void {
    const own = this.lists.get(kItinerary)?.pins ?? [];
    const pins = own.length > 0 ? own : this.lists.all().flatMap((list) => list.pins);
    const bounds = L.latLngBounds([]);
    for (const pin of pins) if (!Number.isNaN(pin.x)) bounds.extend(pin);
    if (bounds.isValid()) {
      this.map.fitBounds(bounds, { padding: [48, 48], maxZoom: kClosestFit, animate: false });
    }
  }

  /** Brings a pin to the middle and marks it. The program asks for this when it selects a row, and
   * so it is not told. */
  view(ref: PinRef): void {
    const pin = this.lists.pin(ref);
    if (!pin || Number.isNaN(pin.x)) return;
    this.lists.selected = ref;
    this.map.panTo(pin, { animate: false });
    this.changed();
  }

  private select(ref: PinRef): void {
    this.view(ref);
    ask(() => program.SelectPoint(ref.list, ref.index), undefined);
  }

  /** Tells assistive technology. */
  private say(message: string): void {
    this.live.textContent = '';
    setTimeout(() => (this.live.textContent = message), 30);
  }

  /** Tells everybody, with a note over the map for some seconds. */
  private announce(message: string): void {
    this.say(message);
    this.note?.remove();
    this.note = element('p', 'note', message);
    this.note.setAttribute('aria-hidden', 'true');
    this.map.getContainer().append(this.note);
  }

  private openPin(ref: PinRef, takesFocus: boolean): void {
    this.lists.selected = ref;
    ask(() => program.SelectPoint(ref.list, ref.index), undefined);
    this.scene.invalidate();
    this.pinWindow.open(ref, takesFocus);
  }

  private click(position: Position): void {
    if (this.menu.isOpen) this.menu.close();
    else if (this.measure.isActive) this.measure.add(position);
    else if (this.pinWindow.shown) this.pinWindow.close(false);
    else if (this.acceptsClicks) addStop(position);
  }

  private toggleMeasure(): void {
    if (this.measure.isActive) this.measure.end();
    else this.measure.start();
  }

  private escape(): void {
    if (this.measure.isActive) this.measure.end();
    else this.pinWindow.close(true);
  }

  private openMenu(position: Position, place: L.Point, pin: PinRef | null): void {
    const items: MenuItem[] = [
      { icon: 'plus', label: text('addStopHere'), run: () => addStop(position) },
      { icon: 'place', label: text('whatIsHere'), run: () => this.tellPlace(position) },
      { icon: 'elevation', label: text('elevationHere'), run: () => this.tellElevation(position) },
      { icon: 'street', label: text('streetView'), run: () => this.streetView(position) },
      { icon: 'measure', label: text('measureFrom'), run: () => this.measure.start(position) },
      { icon: 'fit', label: text('centreHere'), run: () => this.map.panTo(position) },
    ];
    const selected = pin ?? this.lists.selected;
    if (pin) {
      items.unshift({ icon: 'open', label: text('openStop'), run: () => this.openPin(pin, true) });
    } else if (selected?.list === kItinerary) {
      items.splice(1, 0, {
        icon: 'insert', label: text('insertBefore', selected.index + 1),
        run: () => insertStop(selected.index, position),
      });
    }
    this.menu.open(place, text('menu'), items);
  }

  private tellPlace(position: Position): void {
    const found = ask(() => program.ReverseGeocoding(position), null);
    const coordinates = ask(() => program.GetStrCoords(position), '');
    this.announce(found ? `${found.address} · ${coordinates}` : `${text('nothingFound')} · ${coordinates}`);
  }

  private tellElevation(position: Position): void {
    const found = ask(() => program.GetElevation(position), null);
    this.announce(found ? text('elevationIs', Math.round(found.alt)) : text('nothingFound'));
  }

  private streetView(position: Position): void {
    const found = ask(() => program.GetStreetViewLocation(position), null);
    if (found) openStreetView(found);
    else this.announce(text('noStreetView'));
  }

  private changed(): void {
    this.scene.invalidate();
    this.pinWindow.update();
    const isEmpty = this.lists.all().every((list) => list.pins.length === 0);
    this.hint.hidden = !isEmpty;
    if (isEmpty) this.hint.textContent = text(this.acceptsClicks ? 'emptyClick' : 'empty');
  }
}
