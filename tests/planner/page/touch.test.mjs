// Fingers on the map.

import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { calls, Fixture, kColmar, kView, near, pageTest, placeOf, windowOf } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

async function slide(page, from, to, steps = 8) {
  await page.touch('touchStart', [from]);
  for (let i = 1; i <= steps; i++) {
    await page.touch('touchMove', [{ x: from.x + ((to.x - from.x) * i) / steps, y: from.y + ((to.y - from.y) * i) / steps }]);
    await page.frame();
  }
  await page.touch('touchEnd', []);
}

pageTest('a long press opens the menu, a tap a pin', () => fixture.openVillages(), async (page) => {
  await page.touch('touchStart', [{ x: 200, y: 300 }]);
  await page.until('!document.querySelector(".menu").hidden');
  await page.touch('touchEnd', []);
  await page.evaluate('document.activeElement.blur()');
  await page.until('document.querySelector(".menu").hidden');
  await page.touch('touchStart', [{ x: kColmar.x + 8, y: kColmar.y + 4 }]);
  await page.touch('touchEnd', []);
  await windowOf(page, 'Colmar');
});

pageTest('a tap on the map adds a stop', () => fixture.openVillages(), async (page) => {
  const at = placeOf(48.3, 6.9, kView);
  await page.touch('touchStart', [at]);
  await page.touch('touchEnd', []);
  await page.until('player.calls.some(([call]) => call === "AddPoint")');
  near((await calls(page, 'AddPoint'))[0][2], 48.3, 6.9);
});

pageTest('a finger drags a pin', () => fixture.openVillages(), async (page) => {
  await slide(page, { x: kColmar.x + 6, y: kColmar.y - 6 }, placeOf(48.1, 7.6, kView));
  await page.until('player.calls.some(([call]) => call === "MovePoint")');
  const [[, list, index, position]] = await calls(page, 'MovePoint');
  assert.deepEqual([list, index], [0, 8]);
  near(position, 48.1, 7.6);
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});

pageTest('two fingers zoom', () => fixture.openVillages(), async (page) => {
  await page.evaluate('ViewPushPin(0, 8)');
  await page.frame();
  const fingers = (reach) => [{ x: 500 - reach, y: 340, id: 0 }, { x: 500 + reach, y: 340, id: 1 }];
  await page.touch('touchStart', fingers(60));
  for (let reach = 65; reach <= 120; reach += 5) {
    await page.touch('touchMove', fingers(reach));
    await page.frame();
  }
  await page.touch('touchEnd', []);
  await page.rest();
  // Twice as far apart is one zoom nearer.
  const eguisheim = placeOf(48.043, 7.306, { lat: 48.079, lng: 7.358, zoom: 10 });
  await page.click(eguisheim.x, eguisheim.y);
  await windowOf(page, 'Eguisheim');
  assert.deepEqual(await calls(page, 'AddPoint'), []);
});
