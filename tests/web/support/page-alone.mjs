// Opens the built page without a server: the test is the other end of its WebSocket.

import { readFile } from 'node:fs/promises';
import { extname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { watchForTrouble } from './browser.mjs';

const dist = fileURLToPath(new URL('../../../settings/web/ui/dist/', import.meta.url));
const origin = 'http://settings.test';
const types = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.woff2': 'font/woff2' };
const policy = "default-src 'none'; script-src 'self'; style-src 'self'; font-src 'self'; img-src 'self' data:; connect-src 'self' ws://settings.test";

async function serveFile(route) {
  const path = new URL(route.request().url()).pathname;
  const file = path === '/' ? 'index.html' : path.slice(1);
  try {
    const body = await readFile(join(dist, file));
    await route.fulfill({ body, headers: { 'Content-Type': types[extname(file)], 'Content-Security-Policy': policy } });
  } catch {
    await route.fulfill({ status: 404, body: '' });
  }
}

/** The server's end: sends the test's messages, and records the page's messages. */
export class OtherEnd {
  constructor(tree) {
    this.tree = tree;
    this.revision = tree.revision;
    this.sent = [];
    this.accepting = true;
    this.attempts = 0;
    this._answer = () => [];
  }

  get actions() {
    return this.sent.filter((message) => message.type === 'action' && message.action !== 'scroll');
  }

  /** The effect of an action: returns a patch, a text to refuse it, or undefined to leave it unanswered. */
  answer(handler) {
    this._answer = handler;
  }

  connected(socket) {
    this.attempts += 1;
    if (!this.accepting) return socket.close();
    this.socket = socket;
    socket.onMessage((text) => this._received(JSON.parse(text)));
    this.send({ type: 'tree', revision: this.revision, tree: this.tree });
  }

  _received(message) {
    this.sent.push(message);
    if (message.type === 'resync') return this.send({ type: 'tree', revision: this.revision, tree: this.tree });
    if (message.type !== 'action') return undefined;
    const answer = this._answer(message);
    if (typeof answer === 'string') return this.send({ type: 'refused', ack: message.sequence, message: answer });
    return answer && this.patch(answer, message.sequence);
  }

  send(message) {
    this.socket.send(JSON.stringify(message));
  }

  patch(patch, ack) {
    const base = this.revision;
    this.revision += 1;
    this.send({ type: 'patch', base, revision: this.revision, patch, ...(ack !== undefined && { ack }) });
  }
}

/** Opens the page in a new window; `routes` handles addresses besides the page's files. `trouble` must stay empty. */
export async function openAlone(browser, tree, { routes = {}, ...options } = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
  const page = await context.newPage();
  const trouble = watchForTrouble(page);
  const server = new OtherEnd(tree);
  await page.route(`${origin}/**`, serveFile);
  for (const [path, answer] of Object.entries(routes)) {
    if (answer) await page.route(`${origin}${path}`, answer);
  }
  await page.routeWebSocket(/\/socket$/, (socket) => server.connected(socket));
  await page.goto(`${origin}/`);
  await page.locator('.screen').waitFor();
  return { page, context, server, trouble };
}
