// What the program may call, in any order.

import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { calls, Fixture, pageTest, pixels, placeOf } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

pageTest('signals that it is ready, with its version', () => fixture.open({ init: false }), async (page) => {
  const [signal] = await page.evaluate('player.signals');
  assert.match(signal, /^signal:ready:/);
  assert.deepEqual(JSON.parse(decodeURIComponent(signal.slice('signal:ready:'.length))),
                   { software: { version: 1.21, url: '' } });
});

pageTest('has every function that the program calls', () => fixture.open({ init: false }), async (page) => {
  const names = ['InitMap', 'NewPinList', 'ClearPushPins', 'RefreshPushPins', 'ViewPushPin', 'DelPushPin',
    'InsertPushPin', 'AddRoute', 'ClearRoutes', 'AutoViewMap', 'MapClickEnabled', 'CloseInfoWindow',
    'ShowUpdateWindow', 'GetMaps', 'GetProviders', 'SettingsChanged'];
  assert.deepEqual(await page.evaluate(`${JSON.stringify(names)}.filter((name) => typeof window[name] !== 'function')`), []);
});

pageTest('takes all calls before it was started, and with numbers that do not exist',
  () => fixture.open({ init: false }), async (page) => {
    await page.evaluate(`
      ViewPushPin(0, 0); DelPushPin(7, -1); InsertPushPin(0, 99); AddRoute(0, 5); ClearRoutes(3);
      RefreshPushPins(1, -4); RefreshPushPins(0, 1e9); AutoViewMap(); MapClickEnabled(false);
      CloseInfoWindow(); SettingsChanged(); ClearPushPins(12); InitMap('no JSON'); InitMap('')`);
    await page.frame();
  });

pageTest('has no providers of its own', () => fixture.open(), async (page) => {
  assert.deepEqual(JSON.parse(await page.evaluate('GetProviders()')), []);
});

pageTest('asks no address but its own', () => fixture.openVillages(), async (page) => {
  const own = page.requests.filter((url) => url.startsWith(fixture.server.address));
  assert.deepEqual(page.requests, own);
  assert.deepEqual(own.map((url) => new URL(url).pathname).sort(),
                   ['/', '/favicon.ico', '/leaflet.css', '/page.css', '/page.js']);
});

pageTest('fits the itinerary into the map', () => fixture.openVillages(), async (page) => {
  // The highest zoom at which 0.813 degrees of latitude fit into 680 - 96 pixels is 9.
  const view = { lat: (48.62 + 47.807) / 2, lng: (7.103 + 7.493) / 2, zoom: 9 };
  const at = placeOf(48.62, 7.492, view);
  await page.click(at.x, at.y);
  assert.deepEqual(await calls(page, 'SelectPoint'), [['SelectPoint', 0, 0]]);
});

pageTest('brings a pin to the middle and marks it', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 8)');
  await page.frame();
  const [disc] = await pixels(page, [{ x: 494, y: 333 }]);
  assert.equal(disc, '10,102,107');
  // Who asked for it has selected it, and would ask again.
  assert.deepEqual(await calls(page, 'SelectPoint'), []);
  await page.click(500, 340);
  assert.deepEqual((await calls(page, 'SelectPoint')).at(-1), ['SelectPoint', 0, 8]);
});

pageTest('removes a pin and keeps the numbers of the others right', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.lists[0].splice(3, 1); DelPushPin(0, 3); ViewPushPin(0, 7)');
  await page.click(500, 340);
  await page.until('document.querySelector(".pin-name")?.value === "Colmar"');
  assert.equal(await page.evaluate('document.querySelector(".pin-badge").textContent'), '8');
});

pageTest('inserts a pin, and draws no way to what has a new stop before it', () => fixture.openVillages(), async (page) => {
  await page.evaluate(`player.lists[0].splice(1, 0,
    { lat: 48.58, lng: 7.4, alt: 0, address: 'Westhoffen', snippet: '', route: null }); InsertPushPin(0, 1);
    ViewPushPin(0, 2)`);
  await page.click(500, 340);
  await page.until('document.querySelector(".pin-name")?.value === "Molsheim"');
  assert.equal(await page.evaluate('document.querySelectorAll(".way-fact").length'), 0);
});

pageTest('adds a way that was calculated, and clears them all', () => fixture.openVillages(), async (page) => {
  const facts = 'document.querySelectorAll(".way-fact").length';
  await page.evaluate(`player.lists[0][6].route = player.leg([player.lists[0][5], player.lists[0][6]], 5400, 3720);
                       AddRoute(0, 6); ViewPushPin(0, 6)`);
  await page.click(500, 340);
  await page.until(`${facts} === 2`);
  const texts = await page.evaluate('[...document.querySelectorAll(".way-fact")].map((fact) => fact.innerText.replace(/\\s+/g, " "))');
  assert.equal(texts[0], 'From the stop before 5.4 km 01:02');
  // 9700 + 10400 + 11100 + 11800 + 12500 metres before it, 660 + 720 + 780 + 840 + 900 seconds.
  assert.equal(texts[1], 'From the start 60.9 km 02:07');
  await page.evaluate('CloseInfoWindow(); ClearRoutes(0)');
  await page.click(500, 340);
  await page.until(`document.querySelector(".pin-name")?.value === "Riquewihr"`);
  assert.equal(await page.evaluate(facts), 0);
});

pageTest('draws a way of two points from its beginning', () => fixture.open(), async (page) => {
  await page.evaluate(`for (const lng of [7, 8]) {
      player.lists[0].push({ lat: 48, lng, alt: 0, address: '', snippet: '', route: null });
    }
    player.lists[0][1].route = player.leg([player.lists[0][0], player.lists[0][1]]);
    RefreshPushPins(0, 0); AutoViewMap()`);
  await page.until('document.querySelector(".hint").hidden');
  await page.rest();
  assert.deepEqual(await pixels(page, [{ x: 500, y: 340 }]), ['10,127,134']);
});

pageTest('empties a list', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.lists[0].length = 0; ClearPushPins(0)');
  await page.until('!document.querySelector(".hint").hidden');
});

pageTest('keeps pins that stand nowhere off the map', () => fixture.open(), async (page) => {
  await page.evaluate(`player.lists[0].push({ lat: null, lng: NaN, alt: 0, address: 'a', snippet: '', route: null },
    { lat: 91, lng: 0, alt: 0, address: 'b', snippet: '', route: null }); RefreshPushPins(0, 0); AutoViewMap();
    ViewPushPin(0, 0)`);
  await page.frame();
});

pageTest('says that there is a newer version, once', () => fixture.open(), async (page) => {
  await page.evaluate('ShowUpdateWindow(); ShowUpdateWindow()');
  assert.equal(await page.evaluate('document.querySelectorAll(".update").length'), 1);
  await page.evaluate('document.querySelector(".update button").click()');
  assert.equal(await page.evaluate('document.querySelectorAll(".update").length'), 0);
});

pageTest('takes the numbers off when the settings say so', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 10)');
  await page.frame();
  const digits = { x: 495, y: 340 };
  const [before] = await pixels(page, [{ x: 500, y: 340 }]);
  await page.evaluate('player.settings.DisplayNumber = false; SettingsChanged()');
  await page.frame();
  const [dot, beside] = await pixels(page, [{ x: 500, y: 340 }, digits]);
  assert.equal(dot, '255,255,255', `the dot in the middle, which was ${before}`);
  assert.equal(beside, '10,102,107');
});

for (const [language, name] of [['en', 'Show all'], ['fr', 'Tout afficher'], ['de', 'Alles zeigen'], ['nl', 'Alles tonen']]) {
  pageTest(`speaks ${language}`, () => fixture.open({ language }), async (page) => {
    assert.equal(await page.evaluate(`document.querySelector('[aria-label="${name}"]').title`), name);
    assert.equal(await page.evaluate('document.documentElement.lang'), language);
  });
}

pageTest('knows every text that it shows', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 8)');
  await page.click(500, 340);
  await page.click(300, 300, 'right');
  const shown = await page.evaluate('document.body.innerText');
  const names = await page.evaluate('Object.keys(player.texts)');
  assert.deepEqual(names.filter((name) => new RegExp(`(^|\\n)${name}(\\n|$)`).test(shown)), []);
});

pageTest('centres on the country where there is no itinerary', () => fixture.open({ start: {
  country: 'NZ', center: { lat: -41, lng: 173 } } }), async (page) => {
  await page.evaluate('player.lists[0].push({ lat: -41, lng: 173, alt: 0, address: "x", snippet: "", route: null }); RefreshPushPins(0, 0)');
  await page.click(500, 340);
  assert.deepEqual(await calls(page, 'SelectPoint'), [['SelectPoint', 0, 0]]);
});

