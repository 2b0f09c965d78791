// Plays the program behind `window.external`: four lists, the calls that the page makes, and the
// calls that the program makes back. Runs in the page before any of its scripts.
(() => {
  const lists = { 0: [], 1: [], 2: [], 3: [] };
  const calls = [];
  const settings = { AutoCalc: true, DistMiles: false, AutoAddStep: true, DisplayNumber: true, ForceRoad: false };
  const texts = window.stringTexts ?? {};
  const player = {
    lists, calls, settings, texts, signals: [], left: [], waysTold: 0,
    /** What the service answers to a preview: (position) => [status, leg]; or a promise of it. */
    preview: (position) => [0, leg([position, { lat: position.lat + 0.05, lng: position.lng + 0.05 }])],
    reverse: (position) => ({ ...position, alt: 0, address: 'Rue des Clefs, Colmar', snippet: '', route: null }),
    street: (position) => ({ ...position, alt: 0, address: 'Rue des Clefs', snippet: '', route: null }),
    nameOf: () => 'Somewhere',
    road: ({ lat, lng }) => ({ lat: lat + 0.01, lng, alt: 0, address: 'A road', snippet: '', route: null }),
    elevation: (position) => ({ ...position, alt: 187.4, address: '', snippet: '', route: null }),
    leg,
  };

  function leg(points, distance = 12345, duration = 1500) {
    return { distance, duration, avoid_highway: false, avoid_tolls: false, driving: 1, provider: 10,
             points, color: 0 };
  }

  function checked(list, index) {
    const point = lists[list]?.[index];
    if (!point) throw Object.assign(new Error('bad index'), { number: -2147352565 });
    return point;
  }

  // The program cancels every navigation: signals are for itself, other addresses open outside. Left
  // to the browser a signal would open a question for a program that takes it, and that question
  // swallows all keys and clicks.
  navigation.addEventListener('navigate', (event) => {
    const { url } = event.destination;
    (url.startsWith('signal:') ? player.signals : player.left).push(url);
    event.preventDefault();
  });

  const later = (work) => setTimeout(work, 0);
  const program = {
    get Settings() { return settings; },
    Trace(text) { calls.push(['Trace', text]); },
    MessageBox(text, style) { calls.push(['MessageBox', text, style]); return 1; },
    GetCount: (list) => lists[list].length,
    GetPins: (list, first, count) => JSON.stringify(lists[list].slice(first, first + count)
      .map(({ lat, lng, alt, address, snippet, route }) =>
        ({ lat, lng, alt, address, snippet, ...(route && { route: true }) }))),
    GetWays(list, first, count) {
      const ways = [];
      let size = 0;
      for (const { route } of lists[list].slice(first, first + count)) {
        if (size >= 20000) break;
        if (route) size += route.points.length;
        ways.push(route && { ...route, points: undefined,
                             shape: route.points.flatMap(({ lat, lng }) => [lat, lng]) });
      }
      player.waysTold += ways.length;
      return JSON.stringify(ways);
    },
    GetTexts: () => JSON.stringify(player.texts),
    GetPoint(list, index) {
      return { ...checked(list, index), type: list };
    },
    GetStrCoords: ({ lat, lng }) => `${lat.toFixed(6)}, ${lng.toFixed(6)}`,
    SelectPoint(list, index) { calls.push(['SelectPoint', list, index]); },
    DeletePoint(list, index) {
      calls.push(['DeletePoint', list, index]);
      checked(list, index);
      lists[list].splice(index, 1);
      later(() => DelPushPin(list, index));
    },
    RenamePoint(list, index, name) {
      calls.push(['RenamePoint', list, index, name]);
      checked(list, index).address = name;
      later(() => RefreshPushPins(list, index));
    },
    MovePoint(list, index, { lat, lng }) {
      calls.push(['MovePoint', list, index, { lat, lng }]);
      Object.assign(checked(list, index), { lat, lng, route: null });
      later(() => RefreshPushPins(list, index));
    },
    InsertPoint(list, index, { lat, lng }, name, comment) {
      calls.push(['InsertPoint', list, index, { lat, lng }, name, comment]);
      lists[list].splice(index, 0, { lat, lng, alt: 0, address: name || 'New stop', snippet: comment, route: null });
      later(() => InsertPushPin(list, index));
    },
    AddPoint(list, { lat, lng, address = '' }) {
      calls.push(['AddPoint', list, { lat, lng }, address]);
      lists[list].push({ lat, lng, alt: 0, address: address || 'New stop', snippet: '', route: null });
      later(() => InsertPushPin(list, lists[list].length - 1));
    },
    AddFavorite(point) { calls.push(['AddFavorite', point.address]); },
    Calculate(list) { calls.push(['Calculate', list]); },
    SendToGps(target, list, index) { calls.push(['SendToGps', target, list, index]); },
    GetStreetViewLocation(position) { calls.push(['GetStreetViewLocation']); return player.street(position); },
    ReverseGeocoding(position) { calls.push(['ReverseGeocoding']); return player.reverse(position); },
    GetElevation(position) { calls.push(['GetElevation']); return player.elevation(position); },
    GetRoutePreview(list, index, position, moved, callback) {
      calls.push(['GetRoutePreview', list, index, moved]);
      Promise.resolve(player.preview(position)).then(([status, route]) => callback(status, route));
      return null;
    },
    GetLocation: (position) => ({ ...position, alt: 0, address: player.nameOf(position), snippet: '', route: null }),
    GetRoadLocation(position) { calls.push(['GetRoadLocation']); return player.road(position); },
    SetCurrentMap(name, type) { calls.push(['SetCurrentMap', name, type]); },
  };
  Object.defineProperty(window, 'external', { value: program, writable: false });
  Object.defineProperty(window, 'player', { value: player });
})();
