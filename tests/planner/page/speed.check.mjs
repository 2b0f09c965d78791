// What the map takes for ten thousand stops and ways of a million points: the processor time of
// every task of the page's thread, so that what else the machine does matters little. Prints the
// figures; fails where a task would be felt. Not one of the tests that run every time.
//   CORVANE_PAGE=build/release/page node --test tests/planner/page/speed.check.mjs

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Fixture } from './page_fixture.mjs';

const fixture = new Fixture();
before(() => fixture.start());
after(() => fixture.stop());

/** Longest a task may take while the map is moved, and while it loads, in milliseconds. */
const kLongestFrame = 50;
const kLongestFreeze = 200;

/** The processor time in milliseconds of each task of the page's thread while `work` runs. */
async function tasksOf(page, work) {
  const events = [];
  const ended = new Promise((resolve) => page.browser.onEvent(({ method, params }) => {
    if (method === 'Tracing.dataCollected') events.push(...params.value);
    if (method === 'Tracing.tracingComplete') resolve();
  }));
  await page.send('Tracing.start', { transferMode: 'ReportEvents',
                                     traceConfig: { includedCategories: ['toplevel', 'devtools.timeline'] } });
  await work();
  await page.send('Tracing.end');
  await ended;
  const main = new Set(events.filter(({ name, args }) => name === 'thread_name' && args.name === 'CrRendererMain')
    .map(({ pid, tid }) => `${pid} ${tid}`));
  return events.filter(({ name, ph, pid, tid }) => ph === 'X' && main.has(`${pid} ${tid}`) &&
                       (name === 'RunTask' || name === 'ThreadControllerImpl::RunTask'))
    .filter(({ tdur }) => tdur !== undefined).map(({ tdur }) => tdur / 1000).sort((a, b) => a - b);
}

function describe(what, tasks) {
  const at = (share) => tasks[Math.min(tasks.length - 1, Math.floor(tasks.length * share))].toFixed(1);
  console.log(`${what}: ${tasks.length} tasks, longest ${tasks.at(-1).toFixed(1)} ms, ` +
              `99 % below ${at(0.99)} ms, ${tasks.reduce((sum, each) => sum + each, 0).toFixed(0)} ms in all`);
}

/** Stops in rows of a hundred, or far apart in one row, with `points` points of way to each but the
    first, or with none. The ways bend as roads do: in wide curves, and in small ones. */
const kFill = `((stops, points) => {
  const at = stops > 100 ? (i) => ({ lat: 46 + (i % 100) * 0.04, lng: 2 + Math.floor(i / 100) * 0.06 })
    : (i) => ({ lat: 44 + 4 * (i % 2), lng: -5 + i * 15 });
  for (let i = 0; i < stops; i++) {
    const to = at(i), from = at(i - 1);
    const width = Math.abs(to.lng - from.lng) + Math.abs(to.lat - from.lat);
    const way = i === 0 || points === 0 ? null : Array.from({ length: points }, (_, k) => {
      const t = k / (points - 1);
      const bend = width * t * (1 - t) * (0.1 * Math.sin(t * 9) + 0.004 * Math.sin(t * 300) + 0.0001 * Math.sin(t * 9000));
      return { lat: from.lat + (to.lat - from.lat) * t + bend, lng: from.lng + (to.lng - from.lng) * t - bend };
    });
    player.lists[0].push({ ...to, alt: 0, address: 'Stop ' + (i + 1), snippet: '',
                           route: way && player.leg(way, 5000, 300) });
  }
})`;

async function pan(page) {
  for (let i = 0; i < 2; i++) {
    await page.drag({ x: 700, y: 500 }, { x: 300, y: 200 }, 40);
    await page.drag({ x: 300, y: 200 }, { x: 700, y: 500 }, 40);
  }
}

for (const [name, stops, points] of [['ten thousand stops, a million points', 10000, 100],
                                     ['three stops, a million points', 3, 500000],
                                     ['ten thousand stops without ways', 10000, 0]]) {
  test(name, { timeout: 600000 }, async () => {
    const page = await fixture.open();
    await page.evaluate(`${kFill}(${stops}, ${points})`);
    const loading = await tasksOf(page, async () => {
      // In a task of its own, as the program's calls come.
      await page.evaluate('setTimeout(() => { RefreshPushPins(0, 0); AutoViewMap(); }, 0)');
      await page.until(`player.waysTold >= ${stops - 1}`, 'all ways', 240);
      await page.until('document.querySelector(".hint").hidden');
      await page.rest();
    });
    describe(`loading ${name}`, loading);
    await page.evaluate('CloseInfoWindow(); AutoViewMap()');
    await page.rest();
    for (const zooms of [0, 3, 6]) {
      for (let i = 0; i < zooms && zooms > 0 && i < 3; i++) {
        await page.evaluate('document.querySelector(\'[aria-label="Zoom in"]\').click()');
        await page.rest();
      }
      const panning = await tasksOf(page, () => pan(page));
      describe(`panning ${name}, ${zooms} zooms nearer`, panning);
      assert.ok(panning.at(-1) < kLongestFrame, `a task of ${panning.at(-1)} ms while panning`);
    }
    assert.ok(loading.at(-1) < kLongestFreeze, `a task of ${loading.at(-1)} ms while loading`);
    assert.deepEqual(page.errors, []);
    await page.close();
  });
}
