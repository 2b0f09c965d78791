// Starts the page and tells the program that it is ready.

import outline from '../../../resources/world/outline.bin';
import { readWorld } from './outline_data';
import { PlannerMap } from './planner_map';
import { scriptFunctions } from './script_functions';
import { loadTexts } from './texts';
import { readTowns } from './towns';
import towns from 'towns.bin';

const kVersion = 1.21;

loadTexts();
const map = new PlannerMap(document.getElementById('map')!, readWorld(outline), readTowns(towns));
map.build();
Object.assign(window, scriptFunctions(map));

// Behind the load event: a navigation that is cancelled earlier cuts off the rest of the document.
addEventListener('load', () => setTimeout(() => {
  const ready = { software: { version: kVersion, url: '' } };
  location.href = 'signal:ready:' + encodeURIComponent(JSON.stringify(ready));
}, 0));
