// All that can be done with the keyboard alone.

import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { calls, Fixture, kColmar, near, pageTest, placeOf, windowOf } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

pageTest('all can be done with the keyboard', () => fixture.openVillages(), async (page) => {
  await page.evaluate('document.getElementById("map").focus()');
  await page.key('PageDown');
  await page.key('PageDown');
  await page.until('document.querySelector("[role=status]").textContent === "Stop 2 of 13, Molsheim"');
  await page.key('Enter');
  await windowOf(page, 'Molsheim');
  assert.equal(await page.evaluate('document.activeElement.className'), 'pin-name');
  await page.key('Escape');
  assert.equal(await page.evaluate('document.activeElement.id'), 'map');

  await page.key('m', 'KeyM');
  for (let i = 0; i < 4; i++) await page.key('ArrowRight');
  await page.key('Enter');
  const [[, , index, moved]] = await calls(page, 'MovePoint');
  assert.equal(index, 1);
  // Forty pixels at zoom 9 are 40 / (256 * 512) * 360 degrees.
  near(moved, 48.54, 7.493 + (40 * 360) / (256 * 512), 100);
  await page.key('m', 'KeyM');
  await page.key('ArrowRight');
  await page.key('Escape');
  assert.equal((await calls(page, 'MovePoint')).length, 1);

  await page.key('Delete');
  assert.deepEqual(await calls(page, 'DeletePoint'), [['DeletePoint', 0, 1]]);
  await page.key('Insert');
  assert.equal((await calls(page, 'AddPoint')).length, 1);
  await page.key('ContextMenu');
  await page.until('!document.querySelector(".menu").hidden');
  await page.key('ArrowDown');
  await page.evaluate(`document.activeElement.dispatchEvent(
    new MouseEvent('contextmenu', { bubbles: true, cancelable: true, clientX: 300, clientY: 300 }))`);
  assert.equal(await page.evaluate('document.activeElement.textContent'), 'What is here?');
  await page.key('Enter');
  await page.until('document.querySelector(".note")');
  assert.equal(await page.evaluate('document.activeElement.id'), 'map');
  await page.key('d', 'KeyD');
  await page.until('!document.querySelector(".measure-bar").hidden');
});

pageTest('a stop that cannot be moved is said to stay', () => fixture.openVillages(), async (page) => {
  await page.evaluate('external.MovePoint = () => { throw new Error("not now") }; document.getElementById("map").focus()');
  await page.key('PageDown');
  await page.key('m', 'KeyM');
  await page.key('ArrowRight');
  await page.key('Enter');
  await page.until('document.querySelector(".note").textContent === "Left where it was"');
  assert.equal((await calls(page, 'MessageBox')).length, 1);
});

/** Where Eguisheim is found when Colmar is in the middle of the map at a zoom. */
const eguisheimAt = (zoom) => placeOf(48.043, 7.306, { lat: 48.079, lng: 7.358, zoom });

pageTest('zooms by its buttons', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 8)');
  await page.evaluate('document.querySelector(\'[aria-label="Zoom in"]\').focus()');
  await page.key('Enter');
  await page.rest();
  const { x, y } = eguisheimAt(10);
  await page.click(x, y);
  await windowOf(page, 'Eguisheim');
});

pageTest('zooms, moves and shows all by keys', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 8); document.getElementById("map").focus()');
  for (const zoom of [10, 11]) {
    await page.key('+', 'BracketRight', { windowsVirtualKeyCode: 187 });
    await page.rest();
    const { x, y } = eguisheimAt(zoom);
    await page.click(x, y);
    await windowOf(page, 'Eguisheim');
    await page.evaluate('CloseInfoWindow(); ViewPushPin(0, 8); document.getElementById("map").focus()');
  }
  await page.key('-', 'Slash', { windowsVirtualKeyCode: 189 });
  await page.rest();
  await page.key('ArrowRight');
  await page.rest();
  // An arrow moves the map by eighty pixels.
  const { x, y } = eguisheimAt(10);
  await page.click(x - 80, y);
  await windowOf(page, 'Eguisheim');
  await page.evaluate('CloseInfoWindow(); document.getElementById("map").focus()');
  await page.key('f', 'KeyF');
  await page.rest();
  await page.click(kColmar.x, kColmar.y);
  await windowOf(page, 'Colmar');
});

pageTest('every control is reached by the tabulator', () => fixture.openVillages(), async (page) => {
  await page.evaluate('document.body.focus()');
  const reached = [];
  for (let i = 0; i < 12 && reached.at(-1) !== 'Zoom out'; i++) {
    await page.key('Tab');
    reached.push(await page.evaluate('document.activeElement.getAttribute("aria-label")'));
  }
  assert.deepEqual(reached, ['Map', 'Map layers', 'Show all', 'Measure a distance', 'Zoom in', 'Zoom out']);
});
