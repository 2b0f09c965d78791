// Layers of tiles from a server on the loopback: none before the user allows it, the right ones
// afterwards, and the outline where there are none.

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Fixture, pixels, placeOf } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

/** The world as it is shown first, 1000 by 680 pixels. */
const kFirstView = { lat: 30, lng: 10, zoom: 2 };

/** The server by another name than the page's own, so that the page needs leave to ask it. */
const otherName = () => fixture.server.address.replace('127.0.0.1', 'localhost');

/** A layer below /tiles/. */
const layer = (name, more = {}) => ({ name, url: `${otherName()}/tiles/{z}/{x}/{y}.png`,
                                      credit: `© ${name}`, minZoom: 0, maxZoom: 18, ...more });

const allowed = (...names) => names.map((flag) => ({ flag, map: true, sat: false, hybrid: false, topo: false }));

/** A page with these layers, of which the settings allow and show what `start` says. */
function layerTest(name, layers, start, run, tileHosts = null) {
  test(name, async () => {
    const { server } = fixture;
    Object.assign(server, { layers: layers(), tileHosts, tiles: [] });
    const page = await fixture.open({ start });
    try {
      await run(page, server);
      assert.deepEqual(page.errors, []);
    } finally {
      server.layers = [];
      await page.close();
    }
  });
}

const paths = (server) => [...new Set(server.tiles.map(({ path }) => path))].sort();
const tilesAreThere = 'document.querySelectorAll(".tiles img.leaflet-tile-loaded").length > 0';
const credit = (page) => page.evaluate('document.querySelector(".credit").textContent');
const press = (page, name) => page.evaluate(`document.querySelector('[aria-label="${name}"]').click()`);

layerTest('offers all layers to the settings, none of them switched on',
  () => [layer('Streets'), layer('Hills')], {}, async (page) => {
    assert.deepEqual(JSON.parse(await page.evaluate('GetMaps()')),
                     [{ name: 'Streets', map: false }, { name: 'Hills', map: false }]);
  });

layerTest('asks for no tile before a layer is allowed', () => [layer('Streets')],
  { maps: [{ flag: 'Streets', map: false, sat: false, hybrid: false, topo: false }], map: { flag: 'Streets', type: 1 } },
  async (page, server) => {
    await page.drag({ x: 700, y: 500 }, { x: 300, y: 200 });
    await press(page, 'Zoom in');
    await page.rest();
    await press(page, 'Map layers');
    assert.deepEqual(await page.evaluate('[...document.querySelectorAll(".layer-box label")].map((each) => each.textContent)'),
                     ['Outline map']);
    assert.equal(await page.evaluate('document.querySelector(".layer-hint").textContent'),
                 'Allow a map server in the settings to see more than the outline.');
    assert.deepEqual(server.tiles, []);
    assert.equal(await credit(page), 'Natural Earth · GeoNames');
  });

layerTest('an allowed layer that is not chosen is not asked', () => [layer('Streets')],
  { maps: allowed('Streets') }, async (page, server) => {
    await page.rest();
    assert.deepEqual(server.tiles, []);
  });

layerTest('asks for what is in sight and nothing else', () => [layer('Streets')],
  { maps: allowed('Streets'), map: { flag: 'Streets', type: 1 } }, async (page, server) => {
    await page.until(tilesAreThere);
    await page.rest();
    // The middle is the pixel 540, 422 of a world of 1024 pixels: seen are 40 to 1040 and 82 to 762,
    // columns 0 to 3 and once more 0, rows 0 to 2.
    assert.deepEqual(paths(server), [0, 1, 2, 3].flatMap((x) => [0, 1, 2].map((y) => `/tiles/2/${x}/${y}.png`)));
    assert.ok(server.tiles.every(({ headers }) => headers.referer === `${server.address}/`));
    assert.equal(await credit(page), '© Streets');
    await page.evaluate(`InitMap(JSON.stringify({ lang: { hl: 'en' }, maps: [] }))`);
    await page.until('document.querySelectorAll(".tiles img").length === 0');
    assert.equal(await credit(page), 'Natural Earth · GeoNames');
  });

layerTest('spreads its questions over the servers a, b and c',
  () => [layer('Streets', { url: `${otherName()}/tiles/{s}/{z}/{x}/{y}.png` })],
  { maps: allowed('Streets'), map: { flag: 'Streets', type: 1 } }, async (page, server) => {
    await page.until(tilesAreThere);
    await page.rest();
    assert.deepEqual(paths(server), [0, 1, 2, 3].flatMap((x) => [0, 1, 2].map((y) =>
      `/tiles/${'abc'[(x + y) % 3]}/2/${x}/${y}.png`)).sort());
  });

layerTest('asks for no zoom that a layer does not have', () => [layer('Hills', { minZoom: 3, maxZoom: 4 })],
  { maps: allowed('Hills'), map: { flag: 'Hills', type: 1 } }, async (page, server) => {
    await page.rest();
    assert.deepEqual(server.tiles, []);
    for (let zoom = 3; zoom <= 6; zoom++) {
      await press(page, 'Zoom in');
      await page.rest();
      assert.deepEqual([...new Set(paths(server).map((path) => path.split('/')[2]))],
                       zoom === 3 ? ['3'] : ['3', '4']);
      // Nearer than its last zoom, that one is enlarged.
      assert.equal(await page.evaluate(tilesAreThere), true);
    }
  });

layerTest('the outline stays below where tiles are missing, and it is said once',
  () => [layer('Streets', { url: `${otherName()}/nowhere/{z}/{x}/{y}.png` })],
  { maps: allowed('Streets') }, async (page) => {
    await page.rest();
    const before = await page.evaluate('window.notes = 0');
    await page.evaluate(`new MutationObserver((changes) => changes.forEach(({ addedNodes }) =>
      addedNodes.forEach((node) => { if (node.className === 'note') notes++; })))
      .observe(document.getElementById('map'), { childList: true })`);
    assert.equal(before, 0);
    // Land and sea.
    const places = [placeOf(24, 25, kFirstView), placeOf(0, -20, kFirstView)]
      .map(({ x, y }) => ({ x: Math.round(x), y: Math.round(y) }));
    const outline = await pixels(page, places);
    assert.notEqual(outline[0], outline[1]);
    await page.evaluate(`document.querySelector('[aria-label="Map layers"]').click();
      [...document.querySelectorAll('.layer-box input')].at(-1).click();
      document.querySelector('[aria-label="Map layers"]').click()`);
    await page.until('document.querySelector(".note")?.textContent === "The tiles of Streets cannot be loaded."');
    await page.rest();
    assert.deepEqual(await pixels(page, places), outline);
    assert.equal(await page.evaluate('notes'), 1);
    page.errors = page.errors.filter((error) => !error.includes('404'));
  });

layerTest('names of the outline go when tiles come, not when they fail',
  () => [layer('Streets'), layer('Lost', { url: `${otherName()}/nowhere/{z}/{x}/{y}.png` })],
  { maps: allowed('Streets', 'Lost') }, async (page) => {
    // Names are pictures of 20 pixels in height.
    await page.evaluate(`window.names = 0; const draw = CanvasRenderingContext2D.prototype.drawImage;
      CanvasRenderingContext2D.prototype.drawImage = function (image, x, y, width, height) {
        if (height === 20) names++;
        draw.apply(this, arguments);
      }`);
    const namesOf = async (start) => {
      await page.evaluate(`InitMap(${JSON.stringify(JSON.stringify({ lang: { hl: 'en' }, maps: allowed('Streets', 'Lost'), ...start }))})`);
      await page.rest();
      await page.evaluate('names = 0; SettingsChanged()');
      await page.rest();
      return page.evaluate('names');
    };
    const all = await namesOf({});
    assert.ok(all > 10, `${all} names`);
    assert.equal(await namesOf({ map: { flag: 'Lost', type: 1 } }), all);
    assert.equal(await namesOf({ map: { flag: 'Streets', type: 1 } }), 0);
    page.errors = page.errors.filter((error) => !error.includes('404'));
  });

layerTest('the user switches between allowed layers, and the program is told',
  () => [layer('Streets'), layer('Hills', { url: `${otherName()}/tiles/hills/{z}/{x}/{y}.png` }), layer('Other')],
  { maps: allowed('Hills', 'Streets'), map: { flag: 'Streets', type: 1 } }, async (page, server) => {
    await page.until(tilesAreThere);
    await press(page, 'Map layers');
    const rows = `[...document.querySelectorAll('.layer-box label')]`;
    assert.deepEqual(await page.evaluate(`${rows}.map((each) => [each.textContent, each.firstChild.checked])`),
                     [['Outline map', false], ['Streets', true], ['Hills', false]]);
    assert.equal(await page.evaluate('document.activeElement.checked'), true);
    await page.key('ArrowDown');
    await page.until(`document.querySelector(".credit").textContent === '© Hills'`);
    await page.rest();
    assert.ok(paths(server).includes('/tiles/hills/2/1/1.png'));
    await page.evaluate(`${rows}[0].click()`);
    await page.until('document.querySelectorAll(".tiles img").length === 0');
    assert.deepEqual(await page.evaluate('player.calls.filter(([call]) => call === "SetCurrentMap")'),
                     [['SetCurrentMap', 'Hills', 1], ['SetCurrentMap', '', 1]]);
    await page.evaluate('document.querySelector(".layer-box input:checked").focus()');
    await page.key('Escape');
    assert.equal(await page.evaluate('document.querySelector(".layer-box").hidden'), true);
  });

layerTest('a credit with an address is a link to it, and a click on it adds no stop',
  () => [layer('Streets', { credit: '© somebody https://somebody.example/terms' }), layer('Hills', { credit: '<b>us</b>' })],
  { maps: allowed('Streets', 'Hills'), map: { flag: 'Streets', type: 1 } }, async (page) => {
    assert.equal(await credit(page), '© somebody');
    const { x, y } = await page.evaluate('document.querySelector(".credit a").getBoundingClientRect().toJSON()');
    await page.click(x + 8, y + 8);
    await page.until('player.left.length > 0');
    assert.deepEqual(await page.evaluate('player.left'), ['https://somebody.example/terms']);
    assert.deepEqual(await page.evaluate('player.calls.filter(([call]) => call === "AddPoint")'), []);
    await page.evaluate(`InitMap(JSON.stringify({ lang: { hl: 'en' }, maps: ${JSON.stringify(allowed('Hills'))}, map: { flag: 'Hills', type: 1 } }))`);
    assert.equal(await credit(page), '<b>us</b>');
  });

layerTest('a server that the policy of the page does not name is not asked', () => [layer('Streets')],
  { maps: allowed('Streets'), map: { flag: 'Streets', type: 1 } }, async (page, server) => {
    await page.until('document.querySelector(".note")?.textContent === "The tiles of Streets cannot be loaded."');
    assert.deepEqual(server.tiles, []);
    assert.ok(page.errors.every((error) => error.includes('Content Security Policy')));
    page.errors = [];
  }, ['http://localhost:1']);
