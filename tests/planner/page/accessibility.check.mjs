// What axe-core finds in every state of the page; run by .ci/accessibility, which brings it.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';
import { Fixture } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

const kAxe = readFileSync(process.env.CORVANE_AXE, 'utf8');

/** With layers to choose from, and a credit that is a link. */
async function openLayers(dark) {
  const { server } = fixture;
  server.layers = ['Streets', 'Hills'].map((name) => ({ name, url: `${server.address}/tiles/{z}/{x}/{y}.png`,
                                                        credit: `© ${name} https://somebody.example/`, minZoom: 0, maxZoom: 18 }));
  const maps = server.layers.map(({ name }) => ({ flag: name, map: true }));
  const page = await fixture.open({ dark, start: { maps, map: { flag: 'Streets', type: 1 } } });
  server.layers = [];
  await page.until('document.querySelectorAll(".tiles img.leaflet-tile-loaded").length > 0');
  await page.evaluate('document.querySelector(\'[aria-label="Map layers"]\').click()');
  return page;
}

const kStates = {
  'the world': async () => {},
  'the layers': (page) => page.evaluate('document.querySelector(\'[aria-label="Map layers"]\').click()'),
  'measuring': (page) => page.evaluate('document.querySelector(\'[aria-label="Measure a distance"]\').click()'),
  'the window of a stop': async (page) => {
    await page.evaluate('ViewPushPin(0, 8)');
    await page.click(500, 340);
    await page.until('document.querySelector(".pin-name")?.value === "Colmar"');
  },
  'the menu': async (page) => {
    await page.click(300, 300, 'right');
    await page.until('!document.querySelector(".menu").hidden');
  },
  'a note': async (page) => {
    await page.evaluate('ShowUpdateWindow(); document.getElementById("map").focus()');
    await page.key('PageDown');
    await page.key('m', 'KeyM');
    await page.until('document.querySelector(".note")');
  },
};

async function openState(name, dark) {
  if (name === 'a layer') return openLayers(dark);
  const page = name === 'the world' ? await fixture.open({ dark })
    : await fixture.openVillages({ dark, start: { tthome: 'Add to TomTom' } });
  await kStates[name](page);
  return page;
}

for (const dark of [false, true]) {
  for (const name of [...Object.keys(kStates), 'a layer']) {
    test(`${name}, ${dark ? 'dark' : 'light'}`, async () => {
      const page = await openState(name, dark);
      await page.evaluate(kAxe);
      const { violations, passes } = await page.evaluate(`axe.run(document, { resultTypes: ['violations'] })
        .then(({ violations, passes }) => ({ passes: passes.length, violations: violations.map((each) =>
          each.impact + ': ' + each.id + ' at ' + each.nodes.map(({ target }) => target).join(', ')) }))`);
      assert.ok(passes > 5, 'rules were held against the page');
      assert.deepEqual(violations, []);
      await page.close();
    });
  }
}
