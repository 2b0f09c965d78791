// The functions that the program calls. They take calls in any order and never throw.

import { element, iconButton } from './dom';
import { ask } from './external';
import type { PlannerMap } from './planner_map';
import { loadTexts, text } from './texts';

/** Keys of the start text that stand for a companion program, in the order of their numbers. */
const kTargetKeys = ['tthome', 'nvgfresh', 'navgate', 'miomore', 'garmin'] as const;

interface Start {
  center?: { lat: number; lng: number };
  map?: { flag: string; type: number };
  maps?: { flag: string; map: boolean; sat: boolean; hybrid: boolean; topo: boolean }[];
  lang?: { hl: string };
  [target: string]: unknown;
}

export function scriptFunctions(map: PlannerMap): Record<string, (...values: never[]) => unknown> {
  const { lists } = map;
  return {
    InitMap(json: string): void {
      const start = ask(() => JSON.parse(json) as Start, {});
      document.documentElement.lang = start.lang?.hl || 'en';
      loadTexts();
      map.build();
      const shown = (start.maps ?? []).filter((row) => row.map || row.sat || row.hybrid || row.topo);
      map.layers.allow(shown.map((row) => row.flag));
      map.layers.show(start.map?.flag ?? '', false);
      map.setSendTargets(kTargetKeys.flatMap((key, target) =>
        typeof start[key] === 'string' ? [{ target, label: start[key] as string }] : []));
      const hasPins = lists.all().some((list) => list.pins.length > 0);
      if (start.center && Number.isFinite(start.center.lat) && !hasPins) map.setCenter(start.center);
    },

    NewPinList: (list: number): void => lists.create(list),

    ClearPushPins(list: number): void {
      lists.get(list)?.clear();
      lists.touch(list);
    },

    RefreshPushPins(list: number, first: number): void {
      if (!lists.get(list)) lists.create(list);
      lists.get(list)!.refresh(first);
      lists.touch(list);
    },

    InsertPushPin(list: number, index: number): void {
      lists.get(list)?.insert(index);
      lists.touch(list);
    },

    DelPushPin(list: number, index: number): void {
      const { selected } = lists;
      lists.get(list)?.remove(index);
      if (selected?.list === list && selected.index > index) selected.index--;
      else if (selected?.list === list && selected.index === index) lists.selected = null;
      lists.touch(list);
    },

    ViewPushPin: (list: number, index: number): void => map.view({ list, index }),

    AddRoute(list: number, index: number): void {
      lists.get(list)?.expectWay(index);
      lists.touch(list);
    },

    ClearRoutes(list: number): void {
      lists.get(list)?.clearWays();
      lists.touch(list);
    },

    AutoViewMap: (): void => map.fit(),
    MapClickEnabled: (enabled: boolean): void => map.setClicks(enabled),
    CloseInfoWindow: (): void => map.pinWindow.close(false),
    SettingsChanged: (): void => map.readSettings(),

    ShowUpdateWindow(): void {
      if (document.querySelector('.update')) return;
      const bar: HTMLElement = element('div', 'update control', element('span', '', text('newVersion')),
                          iconButton('close', text('close'), () => bar.remove()));
      bar.setAttribute('role', 'status');
      document.body.append(bar);
    },

    GetMaps: (): string => JSON.stringify(map.layers.rows()),
    // The providers of the program are as they are: this page has no others.
    GetProviders: (): string => '[]',
  };
}
