// How the page looks: pictures for the documentation, contrasts, and room for every text. With
// CORVANE_PICTURES the pictures are kept in that folder.

import assert from 'node:assert/strict';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { companions, Fixture, pixels, text } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

async function keep(page, name) {
  const picture = await page.picture();
  assert.ok(picture.length > 10000, `${name} shows something`);
  if (process.env.CORVANE_PICTURES) writeFileSync(join(process.env.CORVANE_PICTURES, `${name}.png`), picture);
}

const kOthers = `player.lists[1].push({ lat: 48.26, lng: 7.45, alt: 0, address: 'Sélestat', snippet: '', route: null });
  player.lists[2].push({ lat: 48.0, lng: 7.5, alt: 0, address: 'Winery Adler', snippet: '', route: null });
  player.lists[3].push({ lat: 48.1, lng: 7.05, alt: 0, address: 'Lac Blanc', snippet: '', route: null });
  [1, 2, 3].forEach((list) => RefreshPushPins(list, 0))`;

for (const dark of [false, true]) {
  const look = dark ? 'dark' : 'light';
  test(`the world and an itinerary, ${look}`, async () => {
    const page = await fixture.open({ dark, width: 1200, height: 720 });
    await page.rest();
    await keep(page, `map-world-${look}`);
    await page.close();
    const trip = await fixture.openVillages({ dark, width: 1200, height: 720, start: { tthome: text('en', 222) } });
    await trip.evaluate(kOthers);
    await trip.rest();
    await keep(trip, `map-trip-${look}`);
    await trip.evaluate('ViewPushPin(0, 8)');
    await trip.click(600, 360);
    await trip.until('document.querySelector(".pin-name")?.value === "Colmar"');
    await keep(trip, `map-stop-${look}`);
    await trip.click(330, 600);
    await trip.click(772, 390, 'right');
    await trip.until('!document.querySelector(".menu").hidden');
    await keep(trip, `map-menu-${look}`);
    assert.deepEqual(trip.errors, []);
    await trip.close();
  });

  test(`texts have contrast, ${look}`, async () => {
    const page = await fixture.open({ dark });
    const ratios = await page.evaluate(`(() => {
      const style = getComputedStyle(document.documentElement);
      const light = (name) => {
        const [, ...parts] = /^#(..)(..)(..)$/.exec(style.getPropertyValue('--' + name).trim());
        const [r, g, b] = parts.map((part) => parseInt(part, 16) / 255)
          .map((value) => (value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4));
        return 0.2126 * r + 0.7152 * g + 0.0722 * b;
      };
      const ratio = (a, b) => { const [dark, bright] = [light(a), light(b)].sort((x, y) => x - y);
                                return (bright + 0.05) / (dark + 0.05); };
      return Object.fromEntries([['text', 'panel'], ['muted', 'panel'], ['text', 'hover'], ['accent', 'panel'],
        ['on-accent', 'accent'], ['label', 'land'], ['label', 'sea'], ['country', 'land'], ['text', 'land'],
        ['accent', 'land'], ['way-casing', 'land']].map(([a, b]) => [a + ' on ' + b, ratio(a, b)]));
    })()`);
    for (const [pair, ratio] of Object.entries(ratios)) {
      // The accent on the land is the edge of a mark, which asks for 3. So does the casing of ways in
      // the dark, where a leg's own colour may be dark too.
      const least = pair === 'way-casing on land' ? (dark ? 3 : 1) : pair === 'accent on land' ? 3 : 4.5;
      assert.ok(ratio >= least, `${pair}: ${ratio.toFixed(2)}`);
    }
    await page.close();
  });
}

test('goes over to dark while it is open', async () => {
  const page = await fixture.openVillages();
  const [light] = await pixels(page, [{ x: 150, y: 500 }]);
  await page.setDark(true);
  await page.rest();
  const [dark] = await pixels(page, [{ x: 150, y: 500 }]);
  assert.deepEqual([light, dark], ['247,244,236', '34,44,48']);
  await page.close();
});

for (const language of ['en', 'fr', 'de', 'nl']) {
  test(`nothing is cut off in ${language}`, async () => {
    const page = await fixture.openVillages({ language, start: companions(language) });
    await page.evaluate('ViewPushPin(0, 8)');
    await page.click(500, 340);
    await page.until('document.querySelector(".pin-name")?.value === "Colmar"');
    const cut = `[...document.querySelectorAll('button, .hint, .way-fact span, legend, label, p')]
      .filter((each) => each.offsetParent && (each.scrollWidth > each.clientWidth + 1 || each.scrollHeight > each.clientHeight + 1))
      .map((each) => each.textContent)`;
    assert.deepEqual(await page.evaluate(cut), []);
    if (language === 'de') await keep(page, 'map-stop-german');
    await page.key('Escape');
    await page.click(300, 300, 'right');
    await page.until('!document.querySelector(".menu").hidden');
    assert.deepEqual(await page.evaluate(cut), []);
    await page.close();
  });
}

// Names are pictures of 20 pixels in height that are drawn onto a canvas, which is larger than the map
// by a quarter of it at each side.
const kNoteNames = `window.names = [];
  const draw = CanvasRenderingContext2D.prototype.drawImage;
  CanvasRenderingContext2D.prototype.drawImage = function (image, x, y, width, height) {
    if (height === 20) names.push({ left: x, top: y + 2, right: x + width, bottom: y + 18 });
    draw.apply(this, arguments);
  };`;

test('no name lies under a control or is cut off by the edge', async () => {
  const size = { width: 1000, height: 680 };
  const map = { left: 0, top: 0, right: size.width, bottom: size.height };
  const page = await fixture.openVillages(size);
  await page.evaluate(kNoteNames);
  const meet = (a, b) => a.left < b.right && a.right > b.left && a.top < b.bottom && a.bottom > b.top;
  let seen = 0;
  for (const move of ['player.lists[0].length = 0; ClearPushPins(0)', null, null, null, null, null]) {
    await page.evaluate('names.length = 0');
    if (move) await page.evaluate(move);
    else await page.drag({ x: 500, y: 340 }, { x: 611, y: 293 }, 60);
    await page.until('names.length > 0');
    await page.rest();
    await page.evaluate('names.length = 0; SettingsChanged()');
    await page.until('names.length > 0');
    const { names, controls } = await page.evaluate(`({ names, controls:
      [...document.querySelectorAll('.buttons, .credit, .hint')].filter((each) => each.offsetWidth > 0)
        .map((each) => each.getBoundingClientRect().toJSON()) })`);
    assert.equal(controls.length, 4);
    for (const each of names) {
      const name = { left: each.left - 250, right: each.right - 250, top: each.top - 170, bottom: each.bottom - 170 };
      if (!meet(name, map)) continue;
      seen++;
      assert.ok(name.left >= 0 && name.right <= map.right && name.top >= 0 && name.bottom <= map.bottom,
                `cut off: ${JSON.stringify(name)}`);
      for (const control of controls) assert.ok(!meet(name, control), JSON.stringify([name, control]));
    }
  }
  assert.ok(seen > 30, `${seen} names`);
  await page.close();
});

test('ten thousand pins stay dots where they would cover each other', async () => {
  const page = await fixture.open();
  await page.evaluate(`for (let i = 0; i < 10000; i++) player.lists[0].push({ lat: 46 + (i % 100) * 0.04,
    lng: 2 + Math.floor(i / 100) * 0.06, alt: 0, address: 'Stop ' + (i + 1), snippet: '', route: null });
    RefreshPushPins(0, 0); AutoViewMap()`);
  await page.until('document.querySelector(".hint").hidden');
  await page.rest();
  await keep(page, 'map-ten-thousand');
  await page.evaluate('ViewPushPin(0, 5050)');
  await page.frame();
  await page.click(500, 340);
  await page.until('document.querySelector(".pin-name")?.value === "Stop 5051"');
  assert.deepEqual(page.errors, []);
  await page.close();
});
