// Drives a headless Chromium through its debugging pipe.

import { spawn } from 'node:child_process';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';

const kArguments = [
  '--headless=new', '--disable-gpu', '--disable-quic', '--no-first-run', '--hide-scrollbars',
  '--disable-background-networking', '--disable-component-update', '--disable-sync',
  '--disable-extensions', '--force-color-profile=srgb', '--remote-debugging-pipe',
];

export class Browser {
  #next = 0;
  #waiting = new Map();
  #listeners = [];
  #rest = '';

  constructor() {
    this.profile = mkdtempSync(join(tmpdir(), 'page-test-'));
    const rootless = process.getuid?.() === 0 ? ['--no-sandbox'] : [];
    this.process = spawn(process.env.CHROMIUM ?? 'chromium',
      [...kArguments, ...rootless, `--user-data-dir=${this.profile}`, 'about:blank'],
      { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'] });
    this.process.stdio[4].on('data', (bytes) => this.#receive(bytes.toString()));
  }

  #receive(text) {
    const messages = (this.#rest + text).split('\0');
    this.#rest = messages.pop();
    for (const message of messages.map((each) => JSON.parse(each))) {
      const waiting = this.#waiting.get(message.id);
      this.#waiting.delete(message.id);
      if (waiting && message.error) waiting.reject(new Error(message.error.message));
      else if (waiting) waiting.resolve(message.result);
      else for (const listener of this.#listeners) listener(message);
    }
  }

  send(method, params = {}, sessionId = undefined) {
    const id = ++this.#next;
    this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId }) + '\0');
    return new Promise((resolve, reject) => this.#waiting.set(id, { resolve, reject }));
  }

  onEvent(listener) {
    this.#listeners.push(listener);
  }

  async newPage(width, height) {
    const { targetId } = await this.send('Target.createTarget', { url: 'about:blank' });
    const { sessionId } = await this.send('Target.attachToTarget', { targetId, flatten: true });
    const page = new Page(this, targetId, sessionId);
    await page.send('Page.enable');
    await page.send('Runtime.enable');
    await page.send('Log.enable');
    await page.send('Emulation.setFocusEmulationEnabled', { enabled: true });
    await page.send('Page.bringToFront');
    await page.setSize(width, height);
    return page;
  }

  async close() {
    const gone = new Promise((resolve) => this.process.once('exit', resolve));
    this.send('Browser.close').catch(() => {});
    await gone;
    rmSync(this.profile, { recursive: true, force: true, maxRetries: 5, retryDelay: 200 });
  }
}

class Page {
  /** Errors that the page or the browser has told: there must be none. */
  errors = [];
  requests = [];

  constructor(browser, targetId, sessionId) {
    this.browser = browser;
    this.targetId = targetId;
    this.sessionId = sessionId;
    browser.onEvent(({ method, params, sessionId: from }) => {
      if (from !== sessionId) return;
      if (method === 'Runtime.exceptionThrown') {
        this.errors.push(params.exceptionDetails.exception?.description ?? params.exceptionDetails.text);
      }
      if (method === 'Log.entryAdded' && params.entry.level === 'error') this.errors.push(params.entry.text);
      if (method === 'Network.requestWillBeSent') this.requests.push(params.request.url);
      if (method === 'Page.loadEventFired') this.loaded?.();
    });
  }

  send(method, params) {
    return this.browser.send(method, params, this.sessionId);
  }

  setSize(width, height, ratio = 1) {
    return this.send('Emulation.setDeviceMetricsOverride',
                     { width, height, deviceScaleFactor: ratio, mobile: false });
  }

  setDark(isDark) {
    return this.send('Emulation.setEmulatedMedia',
                     { features: [{ name: 'prefers-color-scheme', value: isDark ? 'dark' : 'light' }] });
  }

  async open(url, scriptBefore) {
    await this.send('Network.enable');
    await this.send('Page.addScriptToEvaluateOnNewDocument', { source: scriptBefore });
    const loaded = new Promise((resolve) => (this.loaded = resolve));
    await this.send('Page.navigate', { url });
    await loaded;
  }

  /** The value of an expression, or of the promise that it gives. */
  async evaluate(expression) {
    const { result, exceptionDetails } = await this.send('Runtime.evaluate',
      { expression, returnByValue: true, awaitPromise: true });
    if (exceptionDetails) throw new Error(exceptionDetails.exception?.description ?? expression);
    return result.value;
  }

  /** Waits until an expression is true. */
  async until(expression, what = expression, seconds = 20) {
    const end = Date.now() + seconds * 1000;
    while (!(await this.evaluate(`Boolean(${expression})`))) {
      if (Date.now() > end) throw new Error(`never came true: ${what}`);
      await new Promise((resolve) => setTimeout(resolve, 25));
    }
  }

  /** Two frames: what was asked for has been drawn. */
  frame() {
    return this.evaluate(
      'new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(() => done(0))))');
  }

  /** Waits until the picture comes to rest: animations, tiles and names are where they stay. */
  async rest() {
    let before = null;
    let now = await this.picture();
    while (!before?.equals(now)) {
      await new Promise((resolve) => setTimeout(resolve, 150));
      before = now;
      now = await this.picture();
    }
  }

  mouse(type, x, y, extra = {}) {
    return this.send('Input.dispatchMouseEvent',
                     { type, x, y, button: 'left', clickCount: type === 'mouseMoved' ? 0 : 1, ...extra });
  }

  async click(x, y, button = 'left') {
    await this.mouse('mouseMoved', x, y, { button: 'none', buttons: 0 });
    await this.mouse('mousePressed', x, y, { button, buttons: button === 'left' ? 1 : 2 });
    await this.mouse('mouseReleased', x, y, { button, buttons: 0 });
  }

  async drag(from, to, steps = 6) {
    await this.mouse('mouseMoved', from.x, from.y, { button: 'none', buttons: 0 });
    await this.mouse('mousePressed', from.x, from.y, { buttons: 1 });
    for (let i = 1; i <= steps; i++) {
      await this.mouse('mouseMoved', from.x + ((to.x - from.x) * i) / steps,
                       from.y + ((to.y - from.y) * i) / steps, { buttons: 1 });
    }
    // What comes to rest before it is let go has no swing.
    await new Promise((resolve) => setTimeout(resolve, 250));
    await this.mouse('mouseReleased', to.x, to.y, { buttons: 0 });
  }

  async key(key, code = key, extra = {}) {
    const text = key.length === 1 ? key : key === 'Enter' ? '\r' : undefined;
    const params = { key, code, text, windowsVirtualKeyCode: kKeyCodes[key] ?? key.toUpperCase().charCodeAt(0), ...extra };
    await this.send('Input.dispatchKeyEvent', { type: 'keyDown', ...params });
    await this.send('Input.dispatchKeyEvent', { type: 'keyUp', ...params, text: undefined });
  }

  touch(type, points) {
    return this.send('Input.dispatchTouchEvent', { type, touchPoints: points });
  }

  async picture() {
    await this.frame();
    const { data } = await this.send('Page.captureScreenshot', { format: 'png' });
    return Buffer.from(data, 'base64');
  }

  close() {
    return this.browser.send('Target.closeTarget', { targetId: this.targetId });
  }
}

const kKeyCodes = {
  Enter: 13, Escape: 27, PageUp: 33, PageDown: 34, End: 35, Home: 36, ArrowLeft: 37, ArrowUp: 38,
  ArrowRight: 39, ArrowDown: 40, Insert: 45, Delete: 46, Tab: 9, ContextMenu: 93, F10: 121,
};
