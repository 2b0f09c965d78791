// The built page in a browser, with the program played by stand_in.js.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { Browser } from './browser.mjs';
import { PageServer } from './page_server.mjs';

const here = dirname(fileURLToPath(import.meta.url));
export const root = join(here, '..', '..', '..');
const standIn = readFileSync(join(here, 'stand_in.js'), 'utf8');

function table(file) {
  return readFileSync(join(root, 'resources', 'strings', file), 'utf8').split('\n')
    .filter(Boolean).map((line) => line.split('\t'));
}

/** The page's texts as the program hands them over: name without "OnMap", beginning small. */
export function texts(language) {
  const words = new Map(table(`${language}.tsv`).map(([number, ...words]) => [number, words.join('\t')]));
  return Object.fromEntries(table('names.tsv').filter(([, name]) => name.startsWith('OnMap'))
    .map(([number, name]) => [name[5].toLowerCase() + name.slice(6), words.get(number)]));
}

/** One of the program's texts by its number. */
export function text(language, number) {
  return table(`${language}.tsv`).find(([each]) => each === String(number))[1];
}

/** The labels of companion programs that have a button in the window of a pin. */
export function companions(language) {
  return { tthome: text(language, 222), miomore: text(language, 248) };
}

/** Thirteen villages of the Alsace wine road, with a way to each but the seventh. */
export const kVillages = [
  ['Marlenheim', 48.62, 7.492], ['Molsheim', 48.54, 7.493], ['Obernai', 48.462, 7.481],
  ['Barr', 48.408, 7.449], ['Dambach-la-Ville', 48.324, 7.43], ['Ribeauvillé', 48.195, 7.319],
  ['Riquewihr', 48.167, 7.298], ['Kaysersberg', 48.139, 7.264], ['Colmar', 48.079, 7.358],
  ['Eguisheim', 48.043, 7.306], ['Rouffach', 47.957, 7.298], ['Guebwiller', 47.908, 7.21],
  ['Thann', 47.807, 7.103],
];

const kFillVillages = `((villages) => {
  villages.forEach(([address, lat, lng], i) => {
    let route = null;
    if (i > 0 && i !== 6) {
      const [, fromLat, fromLng] = villages[i - 1];
      const points = Array.from({ length: 61 }, (_, k) => {
        const t = k / 60;
        return { lat: fromLat + (lat - fromLat) * t + 0.006 * Math.sin(t * Math.PI * 3) * t * (1 - t) * 4,
                 lng: fromLng + (lng - fromLng) * t + 0.01 * Math.sin(t * Math.PI * 4) * t * (1 - t) * 4 };
      });
      route = player.leg(points, 9000 + 700 * i, 600 + 60 * i);
    }
    player.lists[0].push({ lat, lng, alt: 0, address, route,
                           snippet: address === 'Colmar' ? 'Covered market\\nUnterlinden museum' : '' });
  });
})(${JSON.stringify(kVillages)})`;

export class Fixture {
  async start() {
    this.server = new PageServer(process.env.CORVANE_PAGE);
    await this.server.start();
    this.browser = new Browser();
  }

  async stop() {
    await this.browser.close();
    await this.server.stop();
  }

  /** A page that has signalled that it is ready, and has been started by the program. */
  async open({ language = 'en', width = 1000, height = 680, start = {}, init = true, dark = false } = {}) {
    const page = await this.browser.newPage(width, height);
    await page.setDark(dark);
    await page.open(`${this.server.address}/`,
                    `window.stringTexts = ${JSON.stringify(texts(language))};\n${standIn}`);
    await page.until('player.signals.length > 0', 'the ready signal');
    if (init) {
      const json = { maps: [], userId: '1', number: true, lang: { hl: language }, ...start };
      await page.evaluate(`[0, 1, 2, 3].forEach((list) => NewPinList(list));
                           InitMap(${JSON.stringify(JSON.stringify(json))})`);
    }
    return page;
  }

  /** A page with the villages as its itinerary. */
  async openVillages(options) {
    const page = await this.open(options);
    await page.evaluate(`${kFillVillages}; RefreshPushPins(0, 0); AutoViewMap()`);
    await page.until('document.querySelector(".hint").hidden');
    await page.rest();
    return page;
  }
}

/** Runs a test on a page of its own and sees to it that the page told no error. */
export function pageTest(name, open, run) {
  test(name, async () => {
    const page = await open();
    try {
      await run(page);
      assert.deepEqual(page.errors, []);
    } finally {
      await page.close();
    }
  });
}

/** The calls of one of the program's functions so far, when what it answers later has reached the
    page. */
export function calls(page, name) {
  return page.evaluate(`new Promise((done) => setTimeout(() =>
    done(player.calls.filter(([call]) => call === ${JSON.stringify(name)})), 0))`);
}

/** Colour "r,g,b" of a picture's pixel; drawn again by the browser, which knows PNG. */
export async function pixels(page, places) {
  const picture = (await page.picture()).toString('base64');
  return page.evaluate(`(async () => {
    const bytes = Uint8Array.from(atob(${JSON.stringify(picture)}), (letter) => letter.charCodeAt(0));
    const image = await createImageBitmap(new Blob([bytes], { type: 'image/png' }));
    const canvas = new OffscreenCanvas(image.width, image.height);
    const context = canvas.getContext('2d');
    context.drawImage(image, 0, 0);
    return ${JSON.stringify(places)}.map(({ x, y }) =>
      [...context.getImageData(x, y, 1, 1).data.slice(0, 3)].join(','));
  })()`);
}

/** Where a position stands in a map of this size after `setView(center, zoom)`; a projection of our
    own, so that the page's is held against it. */
export function placeOf(lat, lng, view, width = 1000, height = 680) {
  const world = (position) => ({
    x: ((position.lng + 180) / 360) * 256 * 2 ** view.zoom,
    y: ((1 - Math.asinh(Math.tan((position.lat * Math.PI) / 180)) / Math.PI) / 2) * 256 * 2 ** view.zoom,
  });
  const at = world({ lat, lng });
  const middle = world(view);
  return { x: at.x - middle.x + width / 2, y: at.y - middle.y + height / 2 };
}

/** What `AutoViewMap` shows of the villages. */
export const kView = { lat: (48.62 + 47.807) / 2, lng: (7.103 + 7.493) / 2, zoom: 9 };
export const kColmar = placeOf(48.079, 7.358, kView);

/** A pixel of `kView` is 204 metres. */
export function near(position, lat, lng, metres = 600) {
  const distance = Math.hypot((position.lat - lat) * 111195,
                              (position.lng - lng) * 111195 * Math.cos((lat * Math.PI) / 180));
  assert.ok(distance < metres, `${JSON.stringify(position)} is ${Math.round(distance)} m from ${lat}, ${lng}`);
}

/** Presses the button of this name, or of this text. */
export function press(page, name) {
  return page.evaluate(`[...document.querySelectorAll('button')].find((button) =>
    (button.getAttribute('aria-label') ?? button.textContent) === ${JSON.stringify(name)} && button.offsetParent).click()`);
}

/** Waits for the window of the pin of this name. */
export function windowOf(page, name) {
  return page.until(`!document.querySelector(".pin-window").hidden &&
    document.querySelector(".pin-name").value === ${JSON.stringify(name)}`);
}
