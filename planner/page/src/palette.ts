// Colours of what is drawn on canvases; the style sheet holds them, for light and for dark.

export interface Palette {
  sea: string;
  land: string;
  coast: string;
  border: string;
  panel: string;
  text: string;
  label: string;
  halo: string;
  country: string;
  accent: string;
  onAccent: string;
  way: string;
  wayCasing: string;
  wayMissing: string;
  search: string;
  favourite: string;
  poi: string;
}

const kNames: (keyof Palette)[] = [
  'sea', 'land', 'coast', 'border', 'panel', 'text', 'label', 'halo', 'country', 'accent',
  'onAccent', 'way', 'wayCasing', 'wayMissing', 'search', 'favourite', 'poi',
];

function propertyName(name: string): string {
  return '--' + name.replace(/[A-Z]/g, (letter) => '-' + letter.toLowerCase());
}

function read(): Palette {
  const style = getComputedStyle(document.documentElement);
  return Object.fromEntries(
    kNames.map((name) => [name, style.getPropertyValue(propertyName(name)).trim()]),
  ) as unknown as Palette;
}

export let palette = read();

/** Calls back when the system goes from light to dark or back. */
export function onPaletteChange(changed: () => void): void {
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => {
    palette = read();
    changed();
  });
}
