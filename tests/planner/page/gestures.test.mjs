// The mouse on the map, by what it asks of the program.

import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { calls, Fixture, kColmar, kView, near, pageTest, pixels, placeOf, press, windowOf } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

pageTest('a click on the map adds a stop there', () => fixture.openVillages(), async (page) => {
  const at = placeOf(48.3, 6.9, kView);
  await page.click(at.x, at.y);
  const [[, list, position, name]] = await calls(page, 'AddPoint');
  assert.deepEqual([list, name], [0, 'Somewhere']);
  near(position, 48.3, 6.9);
});

pageTest('stops go to the road where the settings say so', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.settings.ForceRoad = true');
  const at = placeOf(48.3, 6.9, kView);
  await page.click(at.x, at.y);
  near((await calls(page, 'AddPoint'))[0][2], 48.31, 6.9);
  await page.drag(kColmar, placeOf(48.1, 7.6, kView));
  await page.until('player.calls.some(([call]) => call === "MovePoint")');
  near((await calls(page, 'MovePoint'))[0][3], 48.11, 7.6);
  await page.evaluate('player.road = () => null');
  await page.click(at.x + 60, at.y);
  near((await calls(page, 'AddPoint'))[1][2], 48.3, 6.9 + (60 * 360) / (256 * 512));
});

pageTest('a click adds nothing when the map does not accept clicks', () => fixture.openVillages(), async (page) => {
  await page.evaluate('MapClickEnabled(false)');
  const at = placeOf(48.3, 6.9, kView);
  await page.click(at.x, at.y);
  await page.evaluate('MapClickEnabled(true)');
  await page.click(at.x + 40, at.y);
  assert.equal((await calls(page, 'AddPoint')).length, 1);
});

pageTest('a click on a pin selects it and opens its window', () => fixture.openVillages(), async (page) => {
  await page.click(kColmar.x, kColmar.y);
  await page.until('document.querySelector(".pin-name").value === "Colmar"');
  assert.deepEqual(await calls(page, 'SelectPoint'), [['SelectPoint', 0, 8]]);
  assert.equal(await page.evaluate('document.querySelector(".pin-comment").textContent'),
               'Covered market\nUnterlinden museum');
  assert.equal(await page.evaluate('document.querySelector(".pin-position").textContent'),
               '48.079000, 7.358000');
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('dragging the map moves it and adds nothing', () => fixture.openVillages(), async (page) => {
  await page.drag({ x: 200, y: 300 }, { x: 320, y: 330 }, 60);
  await page.frame();
  await page.click(kColmar.x + 120, kColmar.y + 30);
  assert.deepEqual(await calls(page, 'SelectPoint'), [['SelectPoint', 0, 8]]);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('dragging a pin asks for a preview and moves it', () => fixture.openVillages(), async (page) => {
  const to = placeOf(48.1, 7.6, kView);
  await page.drag(kColmar, to);
  await page.until('player.calls.some(([call]) => call === "MovePoint")');
  const [[, list, index, position]] = await calls(page, 'MovePoint');
  assert.deepEqual([list, index], [0, 8]);
  near(position, 48.1, 7.6);
  const previews = await calls(page, 'GetRoutePreview');
  assert.ok(previews.length > 0);
  assert.deepEqual(previews[0], ['GetRoutePreview', 0, 8, true]);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('a drag asks no service where nothing is calculated by itself', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.settings.AutoCalc = false');
  await page.drag(kColmar, placeOf(48.1, 7.6, kView));
  await page.until('player.calls.some(([call]) => call === "MovePoint")');
  assert.deepEqual(await calls(page, 'GetRoutePreview'), []);
});

pageTest('only the last preview counts, and one that fails is not drawn', () => fixture.openVillages(), async (page) => {
  await page.evaluate(`window.waiting = [];
    player.preview = (position) => new Promise((answer) => waiting.push({ position, answer }))`);
  await page.mouse('mouseMoved', kColmar.x, kColmar.y, { button: 'none', buttons: 0 });
  await page.mouse('mousePressed', kColmar.x, kColmar.y, { buttons: 1 });
  for (const x of [20, 40, 60]) await page.mouse('mouseMoved', kColmar.x + x, kColmar.y, { buttons: 1 });
  assert.equal(await page.evaluate('waiting.length'), 1, 'one question at a time');
  const old = placeOf(47.9, 7.7, kView);
  await page.evaluate(`waiting[0].answer([0, player.leg([{ lat: 47.9, lng: 7.6 }, { lat: 47.9, lng: 7.8 }])])`);
  await page.until('waiting.length === 2');
  await page.frame();
  const [ground] = await pixels(page, [{ x: Math.round(old.x), y: Math.round(old.y) }]);
  assert.equal(ground, '247,244,236', 'the answer to an older question is not drawn');
  await page.evaluate(`waiting[1].answer([0, player.leg(Array.from({ length: 80 }, (_, i) => ({ lat: 47.9, lng: 7.6 + i / 400 })))])`);
  await page.frame();
  const row = Array.from({ length: 20 }, (_, i) => ({ x: Math.round(old.x) + i, y: Math.round(old.y) }));
  assert.ok((await pixels(page, row)).includes('10,102,107'), 'the latest one is');
  await page.mouse('mouseReleased', kColmar.x + 60, kColmar.y, { buttons: 0 });
});

pageTest('a pin that cannot be moved jumps back', () => fixture.openVillages(), async (page) => {
  await page.evaluate('external.MovePoint = () => { throw new Error("not now") }');
  await page.drag(kColmar, placeOf(48.1, 7.7, kView));
  await page.until('player.calls.some(([call]) => call === "MessageBox")');
  assert.deepEqual(await calls(page, 'MessageBox'), [['MessageBox', 'That could not be done: not now', 48]]);
  await page.click(kColmar.x, kColmar.y);
  await page.until('document.querySelector(".pin-name")?.value === "Colmar"');
});

pageTest('pins of search results stay where they are', () => fixture.openVillages(), async (page) => {
  await page.evaluate(`player.lists[1].push({ lat: 48.4, lng: 6.9, alt: 0, address: 'Found', snippet: '', route: null });
                       RefreshPushPins(1, 0)`);
  const at = placeOf(48.4, 6.9, kView);
  await page.frame();
  await page.drag(at, { x: at.x + 80, y: at.y });
  await page.click(at.x, at.y);
  await page.until('document.querySelector(".pin-name")?.value === "Found"');
  assert.deepEqual(await calls(page, 'MovePoint'), []);
  assert.equal(await page.evaluate('document.querySelector(".pin-name").readOnly'), true);
  await page.evaluate('[...document.querySelectorAll(".pin-actions button")].find((button) => button.textContent === "Add as a stop").click()');
  near((await calls(page, 'AddPoint'))[0][2], 48.4, 6.9, 1);
});

/** The middle of the way from Guebwiller to Thann: at half of it both sines of the fixture are 0 and -1. */
const kOnWay = placeOf(47.908 + (47.807 - 47.908) / 2 - 0.006, 7.21 + (7.103 - 7.21) / 2, kView);

pageTest('shows a handle on the way, and pulls a new stop out of it', () => fixture.openVillages(), async (page) => {
  await page.mouse('mouseMoved', kOnWay.x, kOnWay.y, { button: 'none', buttons: 0 });
  await page.until('document.querySelector(".way-handle").classList.contains("is-shown")');
  await page.drag(kOnWay, placeOf(47.85, 7.0, kView));
  await page.until('player.calls.some(([call]) => call === "InsertPoint")');
  const [[, list, index, position]] = await calls(page, 'InsertPoint');
  assert.deepEqual([list, index], [0, 12]);
  near(position, 47.85, 7.0);
  await page.until('player.lists[0].length === 14');
});

pageTest('a stop that is pulled out asks for its way, and comes when there is one', () => fixture.openVillages(), async (page) => {
  await page.evaluate(`window.waiting = [];
    player.preview = (position) => new Promise((answer) => waiting.push(answer))`);
  await page.drag(kOnWay, placeOf(47.85, 7.0, kView));
  await page.until('waiting.length === 1');
  assert.deepEqual(await calls(page, 'GetRoutePreview'), [['GetRoutePreview', 0, 12, false]]);
  assert.deepEqual(await calls(page, 'InsertPoint'), []);
  await page.evaluate('waiting[0]([1, null])');
  await page.until('document.querySelector(".note")?.textContent.startsWith("No way leads")');
  assert.deepEqual(await calls(page, 'InsertPoint'), []);
  assert.equal(await page.evaluate('player.lists[0].filter(({ route }) => route).length'), 11);

  await page.drag(kOnWay, placeOf(47.85, 7.0, kView));
  await page.drag(kOnWay, placeOf(47.85, 6.95, kView));
  await page.until('waiting.length === 2');
  await page.evaluate('waiting[1]([0, player.leg([])])');
  await page.until('waiting.length === 3');
  assert.deepEqual(await calls(page, 'InsertPoint'), [], 'the answer to an older drop does not count');
  await page.evaluate('waiting[2]([0, player.leg([])])');
  await page.until('player.calls.some(([call]) => call === "InsertPoint")');
  near((await calls(page, 'InsertPoint'))[0][3], 47.85, 6.95);
});

pageTest('where nothing is calculated by itself, a stop comes at once', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.settings.AutoCalc = false');
  await page.drag(kOnWay, placeOf(47.85, 7.0, kView));
  await page.until('player.calls.some(([call]) => call === "InsertPoint")');
  assert.deepEqual(await calls(page, 'GetRoutePreview'), []);
});

pageTest('the window of a stop without a way offers to calculate it', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 6)');
  await page.click(500, 340);
  await page.until('document.querySelector(".pin-name")?.value === "Riquewihr"');
  await page.evaluate('[...document.querySelectorAll(".way-facts button")].find((button) => button.textContent === "Calculate the way").click()');
  assert.deepEqual(await calls(page, 'Calculate'), [['Calculate', 0]]);
});

pageTest('a click on the way adds a stage there', () => fixture.openVillages(), async (page) => {
  await page.click(kOnWay.x, kOnWay.y);
  await page.until('player.calls.some(([call]) => call === "InsertPoint")');
  assert.equal((await calls(page, 'InsertPoint'))[0][2], 12);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('leaves the way alone where the settings say so', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.settings.AutoAddStep = false');
  await page.drag(kOnWay, placeOf(47.85, 7.0, kView));
  await page.frame();
  assert.deepEqual(await calls(page, 'InsertPoint'), []);
  assert.equal(await page.evaluate('document.querySelector(".way-handle").classList.contains("is-shown")'), false);
});

pageTest('the menu adds a stop, tells the place and the elevation', () => fixture.openVillages(), async (page) => {
  const at = placeOf(48.3, 6.9, kView);
  const choose = async (name) => {
    await page.click(at.x, at.y, 'right');
    await page.until('!document.querySelector(".menu").hidden');
    await page.evaluate(`[...document.querySelectorAll('.menu-item')].find((item) => item.textContent === ${JSON.stringify(name)}).click()`);
  };
  await choose('Add a stop here');
  near((await calls(page, 'AddPoint'))[0][2], 48.3, 6.9);
  await choose('What is here?');
  await page.until('document.querySelector(".note")?.textContent.startsWith("Rue des Clefs, Colmar · 48.")');
  await choose('Elevation here');
  await page.until('document.querySelector(".note").textContent === "Elevation: 187 m"');
  assert.equal(await page.evaluate('document.querySelectorAll(".note").length'), 1);
  await page.evaluate('player.street = () => null');
  await choose('Street-level view');
  await page.until('document.querySelector(".note").textContent === "There is no street-level view near here."');
});

pageTest('the window renames, removes, keeps and sends', () => fixture.openVillages({ start: {
  tthome: 'Add to TomTom', garmin: 'Add to Garmin' } }), async (page) => {
  const press = (name) => page.evaluate(
    `[...document.querySelectorAll('.pin-actions button')].find((button) => button.textContent === ${JSON.stringify(name)}).click()`);
  await page.click(kColmar.x, kColmar.y);
  await page.until('document.querySelector(".pin-name")?.value === "Colmar"');
  await page.evaluate(`(() => { const name = document.querySelector('.pin-name');
    name.focus(); name.value = 'Kolmar'; name.dispatchEvent(new Event('change')); name.blur(); })()`);
  assert.deepEqual(await calls(page, 'RenamePoint'), [['RenamePoint', 0, 8, 'Kolmar']]);
  await press('Add to favorites');
  assert.equal((await calls(page, 'AddFavorite')).length, 1);
  await press('Add to Garmin');
  await press('Add to TomTom');
  assert.deepEqual(await calls(page, 'SendToGps'), [['SendToGps', 4, 0, 8], ['SendToGps', 0, 0, 8]]);
  await press('Remove');
  assert.deepEqual(await calls(page, 'DeletePoint'), [['DeletePoint', 0, 8]]);
  await page.until('document.querySelector(".pin-window").hidden');
});

pageTest('measures along clicks', () => fixture.open(), async (page) => {
  await page.evaluate('document.querySelector(\'[aria-label="Measure a distance"]\').click()');
  await page.click(400, 300);
  await page.click(500, 300);
  await page.mouse('mouseMoved', 500, 300, { button: 'none', buttons: 0 });
  // A hundred pixels at zoom 2 are 35.15625 degrees of longitude, here at the latitude of y 300,
  // which is 40 pixels above 30 degrees north: 41.38 degrees north.
  const shown = await page.evaluate('document.querySelector(".measure-bar output").textContent');
  const kilometres = Number(shown.replace(/[^0-9.]/g, ''));
  const [latitude, half] = [41.38, 35.15625 / 2].map((degrees) => (degrees * Math.PI) / 180);
  const expected = 2 * 6371 * Math.asin(Math.cos(latitude) * Math.sin(half));
  assert.ok(Math.abs(kilometres - expected) < 8, `${shown}, expected about ${expected}`);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
  await page.evaluate('document.getElementById("map").focus()');
  await page.key('Escape');
  assert.equal(await page.evaluate('document.querySelector(".measure-bar").hidden'), true);
});

pageTest('a stop that no way leads to any more is joined by a grey line, and the other ways stay', () => fixture.openVillages(), async (page) => {
  const to = placeOf(48.1, 7.6, kView);
  await page.drag(kColmar, to);
  await page.until('player.calls.some(([call]) => call === "MovePoint")');
  await page.rest();
  // Forty pixels of the line from Kaysersberg, away from both ends of it.
  const from = placeOf(48.139, 7.264, kView);
  const line = Array.from({ length: 40 }, (_, i) => {
    const share = 0.4 + i / 200;
    return { x: Math.round(from.x + (to.x - from.x) * share), y: Math.round(from.y + (to.y - from.y) * share) };
  });
  const colours = await pixels(page, line);
  assert.ok(colours.includes('109,125,132'), 'some of it is drawn in grey');
  assert.ok(colours.includes('247,244,236'), 'and it is broken');
  assert.deepEqual(await pixels(page, [{ x: Math.round(kOnWay.x), y: Math.round(kOnWay.y) }]), ['10,127,134']);
  assert.equal(await page.evaluate('document.querySelectorAll(".way-handle.is-shown, .drag-ghost.is-shown").length'), 0);
});

pageTest('Escape ends a drag, and nothing is moved', () => fixture.openVillages(), async (page) => {
  await page.evaluate('document.getElementById("map").focus()');
  await page.mouse('mouseMoved', kColmar.x, kColmar.y, { button: 'none', buttons: 0 });
  await page.mouse('mousePressed', kColmar.x, kColmar.y, { buttons: 1 });
  for (const x of [20, 40]) await page.mouse('mouseMoved', kColmar.x + x, kColmar.y, { buttons: 1 });
  await page.until('document.querySelector(".drag-ghost.is-shown")');
  await page.key('Escape');
  await page.until('!document.querySelector(".drag-ghost.is-shown")');
  await page.mouse('mouseReleased', kColmar.x + 40, kColmar.y, { buttons: 0 });
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
  assert.deepEqual(await calls(page, 'MovePoint'), []);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('the menu inserts before the selected stop, centres, measures and opens a pin', () => fixture.openVillages(), async (page) => {
  const at = placeOf(48.3, 6.9, kView);
  const menuAt = async ({ x, y }) => {
    await page.click(x, y, 'right');
    await page.until('!document.querySelector(".menu").hidden');
  };
  await menuAt(kColmar);
  await press(page, 'Open');
  await windowOf(page, 'Colmar');
  await page.evaluate('CloseInfoWindow()');
  await menuAt(at);
  await press(page, 'Insert a stop here before number 9');
  const [[, list, index, position]] = await calls(page, 'InsertPoint');
  assert.deepEqual([list, index], [0, 8]);
  near(position, 48.3, 6.9);
  await menuAt(at);
  await press(page, 'Measure from here');
  await page.mouse('mouseMoved', at.x, at.y + 100, { button: 'none', buttons: 0 });
  await page.until('document.querySelector(".measure-bar output").textContent.endsWith(" km")');
  // A hundred pixels to the south, of 203 to 204 metres.
  const kilometres = parseFloat(await page.evaluate('document.querySelector(".measure-bar output").textContent'));
  assert.ok(kilometres > 20.2 && kilometres < 20.6, `${kilometres} km`);
  await press(page, 'End measuring');
  await menuAt(at);
  await press(page, 'Centre the map here');
  await page.rest();
  await page.click(500, 340, 'right');
  await page.until('!document.querySelector(".menu").hidden');
  await press(page, 'Add a stop here');
  near((await calls(page, 'AddPoint'))[0][2], 48.3, 6.9);
});

pageTest('the street-level view opens outside, from the window and from the menu', () => fixture.openVillages(), async (page) => {
  await page.evaluate('player.street = ({ lat, lng }) => ({ lat: lat + 0.001, lng, alt: 0, address: "", snippet: "", route: null })');
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
  await press(page, 'Street-level view');
  await page.until('player.left.length === 1');
  await page.evaluate('CloseInfoWindow()');
  await page.click(200, 300, 'right');
  await page.until('!document.querySelector(".menu").hidden');
  await press(page, 'Street-level view');
  await page.until('player.left.length === 2');
  const [fromWindow, fromMenu] = await page.evaluate('player.left');
  assert.equal(fromWindow, 'https://www.google.com/maps/@?api=1&map_action=pano&viewpoint=48.080000,7.358000');
  const [lat, lng] = fromMenu.split('viewpoint=')[1].split(',').map(Number);
  const place = placeOf(lat - 0.001, lng, kView);
  assert.ok(Math.hypot(place.x - 200, place.y - 300) < 3, fromMenu);
});

pageTest('shows all again by its button', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 0)');
  await press(page, 'Zoom in');
  await page.rest();
  await press(page, 'Show all');
  await page.rest();
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
});

pageTest('the wheel zooms to where the pointer is', () => fixture.openVillages(), async (page) => {
  await page.mouse('mouseMoved', kColmar.x, kColmar.y, { button: 'none', buttons: 0 });
  await page.mouse('mouseWheel', kColmar.x, kColmar.y, { button: 'none', deltaX: 0, deltaY: -120 });
  await page.rest();
  // Colmar stays where it is, and at zoom 10 Eguisheim is twice as far from it.
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
  await page.evaluate('CloseInfoWindow()');
  const eguisheim = placeOf(48.043, 7.306, kView);
  await page.click(kColmar.x + 2 * (eguisheim.x - kColmar.x), kColmar.y + 2 * (eguisheim.y - kColmar.y));
  await windowOf(page, 'Eguisheim');
});

pageTest('measures in miles where the settings say so', () => fixture.open(), async (page) => {
  await page.evaluate('player.settings.DistMiles = true');
  await press(page, 'Measure a distance');
  // Both at the equator's height would be 35.15625 degrees apart; these are at that of the middle.
  await page.click(400, 340);
  await page.click(500, 340);
  await page.mouse('mouseMoved', 500, 340, { button: 'none', buttons: 0 });
  const miles = Number((await page.evaluate('document.querySelector(".measure-bar output").textContent')).replace(/[^0-9.]/g, ''));
  const [latitude, half] = [30, 35.15625 / 2].map((degrees) => (degrees * Math.PI) / 180);
  const expected = (2 * 6371 * Math.asin(Math.cos(latitude) * Math.sin(half))) / 1.609344;
  assert.ok(Math.abs(miles - expected) < 5, `${miles}, expected about ${expected}`);
});

pageTest('what the program refuses is told, and not said to be done', () => fixture.openVillages(), async (page) => {
  await page.evaluate(`for (const name of ['AddFavorite', 'RenamePoint', 'DeletePoint', 'SendToGps', 'AddPoint', 'InsertPoint'])
    external[name] = () => { throw new Error(name + ' failed') };`);
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
  await press(page, 'Add to favorites');
  await page.evaluate(`(() => { const name = document.querySelector('.pin-name');
    name.value = 'Kolmar'; name.dispatchEvent(new Event('change')); })()`);
  assert.equal(await page.evaluate('document.querySelector(".pin-name").value'), 'Colmar');
  await press(page, 'Remove');
  const at = placeOf(48.3, 6.9, kView);
  await page.click(at.x, at.y);
  assert.deepEqual((await calls(page, 'MessageBox')).map(([, message]) => message),
                   ['AddFavorite', 'RenamePoint', 'DeletePoint', 'AddPoint'].map((name) => `That could not be done: ${name} failed`));
  assert.equal(await page.evaluate('document.querySelectorAll(".note").length'), 0);
});
