// Serves the built page as the program's own scheme does, with the layers written into it, and
// tiles below /tiles/.

import { readFileSync } from 'node:fs';
import { createServer } from 'node:http';
import { join } from 'node:path';

const kTypes = { html: 'text/html', css: 'text/css', js: 'text/javascript', png: 'image/png' };

/** A tile of one colour with a frame, for any address below /tiles/. */
const kTile = Buffer.from(
  'iVBORw0KGgoAAAANSUhEUgAAABAAAAAQCAIAAACQkWg2AAAAKUlEQVR42mM4cOQ/SYgBpuHUlZtEQtI1jGoY' +
  '1TCqYVTDqIZRDYNdAwBXpaLPwGQVBQAAAABJRU5ErkJggg==', 'base64');

export class PageServer {
  /** As the program writes them into the page: {name, url, credit, minZoom, maxZoom}. */
  layers = [];
  /** Whom the page may ask for tiles; by default all servers of the layers. */
  tileHosts = null;
  /** Path and headers of each tile that was asked for. */
  tiles = [];

  constructor(folder) {
    this.server = createServer((request, response) => {
      const path = new URL(request.url, 'http://localhost').pathname;
      if (path.startsWith('/tiles/')) {
        this.tiles.push({ path, headers: request.headers });
        response.writeHead(200, { 'Content-Type': 'image/png' });
        response.end(kTile);
        return;
      }
      if (path === '/favicon.ico') {
        response.writeHead(204);
        response.end();
        return;
      }
      this.#serveFile(folder, path === '/' ? 'index.html' : path.slice(1), response);
    });
  }

  #serveFile(folder, name, response) {
    let content;
    try {
      content = readFileSync(join(folder, name));
    } catch {
      response.writeHead(404);
      response.end();
      return;
    }
    if (name === 'index.html') {
      const hosts = this.tileHosts ?? this.layers.map(({ url }) => new URL(url.replace(/[{}]/g, '')).origin);
      content = content.toString()
        .replace('@TILE_HOSTS@', hosts.join(' '))
        .replace('@TILE_SERVERS@', JSON.stringify(this.layers).replaceAll('&', '&amp;').replaceAll('"', '&quot;'));
    }
    response.writeHead(200, { 'Content-Type': kTypes[name.split('.').pop()] ?? 'application/octet-stream' });
    response.end(content);
  }

  start() {
    return new Promise((resolve) => this.server.listen(0, '127.0.0.1', () => {
      this.address = `http://127.0.0.1:${this.server.address().port}`;
      resolve();
    }));
  }

  stop() {
    this.server.closeAllConnections?.();
    return new Promise((resolve) => this.server.close(resolve));
  }
}
