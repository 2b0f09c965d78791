// Gives the planner page what it finds as `window.external`. Runs before any script of the page, in
// its main frame only. The program answers by way of the page's own prompt, which waits.

(() => {
  'use strict';
  if (window !== window.top || location.origin !== '@ORIGIN@') return;

  const secret = '@SECRET@';
  const prompt = window.prompt.bind(window);
  const numbers = new WeakMap();  // of the program's objects
  const functions = new Map();    // that the program may call, by their numbers
  const functionNumbers = new WeakMap();
  let lastFunction = 0;
  let released = [];
  const registry = new FinalizationRegistry((number) => released.push(number));

  // The calls of the program come in their order, each once, and one behind the other: one that
  // arrives in the middle of another waits for its end.
  const waiting = [];
  let received = 0;
  let isRunning = false;

  function numberOf(callback) {
    if (!functionNumbers.has(callback)) functionNumbers.set(callback, ++lastFunction);
    functions.set(functionNumbers.get(callback), callback);
    return functionNumbers.get(callback);
  }

  function encode(value, depth = 0) {
    switch (typeof value) {
      case 'boolean':
      case 'string':
        return value;
      case 'number':
        return Number.isFinite(value) ? value : {n: String(value)};
      case 'function':
      case 'object':
        break;
      default:
        return null;
    }
    if (value === null || depth > 16) return null;
    if (numbers.has(value)) return {h: numbers.get(value)};
    if (typeof value === 'function') return {f: numberOf(value)};
    if (Array.isArray(value)) return value.map((each) => encode(each, depth + 1));
    const members = Object.create(null);
    for (const name in value) {
      const isInheritedMethod = typeof value[name] === 'function' && !Object.hasOwn(value, name);
      if (!isInheritedMethod) members[name] = encode(value[name], depth + 1);
    }
    return {o: members};
  }

  function decode(json) {
    if (json === null || typeof json !== 'object') return json;
    if (Array.isArray(json)) return json.map(decode);
    if ('h' in json) return liveObject(json.h, json.p, json.m);
    if ('n' in json) return Number(json.n);
    return Object.fromEntries(Object.entries(json.o).map(([name, value]) => [name, decode(value)]));
  }

  function request(action, object, name, values) {
    const text = JSON.stringify({
      action, object, name, values: values.map((value) => encode(value)), received, released,
    });
    released = [];
    const answer = prompt(secret, text);
    if (answer === null) throw new Error('The program does not answer.');
    const reply = JSON.parse(answer);
    const value = reply.error === undefined ? decode(reply.value) : undefined;
    run(reply.calls);
    if (reply.error !== undefined)
      throw Object.assign(new Error(reply.text), {number: reply.error});
    return value;
  }

  function run(calls) {
    for (const call of calls) {
      if (call.number <= received) continue;
      received = call.number;
      waiting.push(call);
    }
    if (isRunning) return;
    isRunning = true;
    while (waiting.length > 0) runOne(waiting.shift());
    isRunning = false;
  }

  function runOne(call) {
    if (call.drop !== undefined) {
      functions.delete(call.drop);
      return;
    }
    try {
      const callee = call.callback === undefined ? window[call.name] : functions.get(call.callback);
      if (typeof callee === 'function') callee(...call.values.map(decode));
      else if (!call.optional) throw new Error(`${call.name} is no function`);
    } catch (failure) {
      console.error(failure);
    }
  }

  // Reading a property asks the program each time, and so an unknown name fails there. Engine and
  // JSON ask every object for these few.
  const unasked = new Set(['then', 'toJSON']);

  function liveObject(number, properties, methods) {
    const known = new Set([...properties, ...methods]);
    const calls = new Map(methods.map((name) =>
      [name, (...values) => request('call', number, name, values)]));
    const parts = new Map();
    const target = () => {};
    delete target.length;
    delete target.name;
    const proxy = new Proxy(target, {
      get(_, name) {
        if (typeof name === 'symbol' || unasked.has(name)) return undefined;
        if (calls.has(name)) return calls.get(name);
        if (parts.has(name)) return parts.get(name);
        const value = request('get', number, name, []);
        if (number === 0) parts.set(name, value);
        return value;
      },
      set(_, name, value) {
        request('put', number, name, [value]);
        return true;
      },
      has: (_, name) => known.has(name),
      ownKeys: () => [...known],
      getOwnPropertyDescriptor: (_, name) => known.has(name) ?
        {configurable: true, enumerable: true, writable: true, value: undefined} : undefined,
      // The settings and the codecs work as properties and as calls.
      apply: () => proxy,
      deleteProperty: () => false,
      defineProperty: () => false,
      setPrototypeOf: () => false,
    });
    numbers.set(proxy, number);
    if (number !== 0) registry.register(proxy, number);
    return proxy;
  }

  function answer(name, values) {
    try {
      const callee = window[name];
      if (typeof callee !== 'function') return JSON.stringify({error: @UNKNOWN_NAME@, text: name});
      return JSON.stringify({value: encode(callee(...values.map(decode)))});
    } catch (failure) {
      return JSON.stringify({error: @FAILED@, text: String(failure)});
    }
  }

  Object.defineProperty(window, '@ENTRY@', {
    value: Object.freeze({
      send(calls) {
        run(calls);
        return received;
      },
      call(calls, name, values) {
        run(calls);
        return answer(name, values);
      },
    }),
  });
  Object.defineProperty(window, 'external', {
    value: liveObject(0, @PROPERTIES@, @METHODS@),
    enumerable: true,
  });
})();
