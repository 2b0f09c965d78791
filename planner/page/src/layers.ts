// The outline map, and the layers of tiles that the user allows.

import * as L from 'leaflet';
import { element } from './dom';
import { ask, program } from './external';
import { text } from './texts';

/** A layer of tiles, as the program writes it into the page. */
export interface TileServer {
  name: string;
  url: string;
  credit: string;
  minZoom: number;
  maxZoom: number;
}

/** What the map shows besides the outline: the number that the program keeps for a kind of map. */
const kMapKind = 1;

export class Layers {
  private readonly servers: TileServer[] = readServers();
  private readonly allowed = new Set<string>();
  private readonly box = element('fieldset', 'layer-box control');
  private current: { server: TileServer; layer: L.TileLayer; hasTiles: boolean } | null = null;

  constructor(private readonly map: L.Map, private readonly credit: HTMLElement,
              private readonly outlineCredit: string,
              private readonly changed: (showsTiles: boolean) => void,
              private readonly announce: (message: string) => void) {
    this.box.hidden = true;
    this.box.addEventListener('keydown', (event) => {
      event.stopPropagation();
      if (event.key === 'Escape') this.toggle(false);
    });
    for (const kind of ['pointerdown', 'mousedown', 'dblclick', 'wheel']) {
      this.box.addEventListener(kind, (event) => event.stopPropagation());
    }
    map.getContainer().append(this.box);
    map.on('zoomend', () => this.tellShown());
    this.showCredit();
  }

  /** The rows of `GetMaps`: what can be switched on. No server is asked before the user allows it. */
  rows(): { name: string; map: boolean }[] {
    return this.servers.map(({ name }) => ({ name, map: false }));
  }

  /** The names that the user's settings allow. */
  allow(names: string[]): void {
    this.allowed.clear();
    for (const name of names) this.allowed.add(name);
    if (this.current && !this.allowed.has(this.current.server.name)) this.show('', false);
    this.fill();
  }

  /** Shows a layer over the outline; an unknown or empty name shows the outline alone. Beyond its
   * zooms nothing is asked for: nearer, its last tiles are enlarged; farther, the outline shows. */
  show(name: string, tellsProgram: boolean): void {
    this.current?.layer.remove();
    this.current = null;
    const server = this.servers.find((each) => each.name === name && this.allowed.has(name));
    if (server) {
      const layer = new L.TileLayer(server.url, {
        minZoom: server.minZoom, maxNativeZoom: server.maxZoom, maxZoom: 20, className: 'tiles',
      });
      // Once is enough: the outline stays below.
      const tell = (): void => {
        layer.off('tileerror', tell);
        this.announce(text('tilesFailed', name));
      };
      layer.on('tileerror', tell);
      const current = { server, layer, hasTiles: false };
      layer.on('tileload', () => {
        if (current.hasTiles) return;
        current.hasTiles = true;
        this.tellShown();
      });
      this.current = current;
      layer.addTo(this.map);
    }
    if (tellsProgram) ask(() => program.SetCurrentMap(server?.name ?? '', kMapKind), undefined);
    this.showCredit();
    this.fill();
    this.tellShown();
  }

  // Until a tile is there, the outline's own names are all that can be read.
  private tellShown(): void {
    this.changed(this.current !== null && this.current.hasTiles &&
                 this.map.getZoom() >= this.current.server.minZoom);
  }

  toggle(isShown = this.box.hidden): void {
    this.box.hidden = !isShown;
    if (isShown) this.box.querySelector<HTMLElement>('input:checked')?.focus();
  }

  fill(): void {
    const choices = ['', ...this.servers.map(({ name }) => name).filter((name) => this.allowed.has(name))];
    const hasFocus = this.box.contains(document.activeElement);
    this.box.replaceChildren(
      element('legend', '', text('layers')),
      ...choices.map((name) => this.choice(name)),
      ...(choices.length === 1 ? [element('p', 'layer-hint', text('layersHint'))] : []),
    );
    if (hasFocus) this.box.querySelector<HTMLElement>('input:checked')?.focus();
  }

  private choice(name: string): HTMLElement {
    const input = element('input', '');
    input.type = 'radio';
    input.name = 'layer';
    input.checked = name === (this.current?.server.name ?? '');
    input.addEventListener('change', () => this.show(name, true));
    return element('label', '', input, element('span', '', name || text('outline')));
  }

  private showCredit(): void {
    this.credit.replaceChildren(this.current ? creditOf(this.current.server) : this.outlineCredit);
  }
}

/** A credit that ends in an address is a link to it, which the program opens outside. */
function creditOf({ credit }: TileServer): HTMLElement | string {
  const [, words, address] = /^(.*\S)\s+(https?:\/\/\S+)$/.exec(credit) ?? [];
  if (!words || !address) return credit;
  const link = element('a', '', words);
  link.href = address;
  return link;
}

function readServers(): TileServer[] {
  const content = document.querySelector<HTMLMetaElement>('meta[name="tile-servers"]')?.content ?? '';
  return ask(() => {
    const rows: unknown = JSON.parse(content || '[]');
    return Array.isArray(rows) ? (rows as TileServer[]).filter((row) => row.name && row.url) : [];
  }, []);
}
