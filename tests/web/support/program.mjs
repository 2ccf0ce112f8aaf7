// The real program on a new device tree, in a temporary folder that is deleted at the end.

import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtemp, readFile, rename, rm, writeFile } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';
import { watchForTrouble } from './browser.mjs';
import { still } from './eventually.mjs';
import { installModules, readPlist, readTyped, writePlist } from './plists.mjs';

const run = promisify(execFile);
const repository = fileURLToPath(new URL('../../../', import.meta.url));
export const program = process.env.ZENTROVA_SETTINGS ?? join(repository, 'build/release/bin/zentrova-settings');
const dist = join(repository, 'settings/web/ui/dist');
const preferences = 'var/jb/var/mobile/Library/Preferences';
const modules = 'var/jb/var/mobile/Library/ControlCenter';
const installed = 'var/jb/Library/ControlCenter/Bundles';

/** A device tree; `dispose` deletes it. */
export async function makeDevice() {
  const folder = await mkdtemp(join(tmpdir(), 'zentrova-web-'));
  const root = join(folder, 'device');
  const dispose = () => rm(folder, { recursive: true, force: true });
  try {
    await run(program, ['device', 'create', root]);
  } catch (error) {
    await dispose();
    throw error;
  }
  const file = join(root, preferences, 'com.hollowmere.zentrovaprefs.plist');
  const configuration = join(root, modules, 'ModuleConfiguration_CCSupport.plist');
  const changing = await Promise.all([file, configuration].map(async (path) => ({ path, bytes: await readFile(path) })));
  return {
    root,
    file,
    kestrelle: join(root, preferences, 'com.hollowmere.kestrelleprefs.plist'),
    writePlist,
    /** The preference file, each value with its type; empty if the file does not exist. */
    read: () => readTyped(file),
    /** The module configuration file of the Control Center support library. */
    configuration: () => readPlist(configuration),
    /** Adds this number of modules, without icons. */
    installModules: (count) => installModules(join(root, installed), count),
    /** Replaces a program of the device with a shell script. */
    putProgram: (path, script) => writeFile(join(root, path), `#!/bin/sh\n${script}\n`, { mode: 0o755 }),
    /** Restores the files that the pages write. */
    restore: () => Promise.all(changing.map(({ path, bytes }) => replaceFile(path, bytes))),
    dispose,
  };
}

// Replaces the file atomically: a reader sees the old or the new one.
async function replaceFile(path, bytes) {
  await writeFile(`${path}.new`, bytes);
  await rename(`${path}.new`, path);
}

/** Starts `serve`; returns its address, its port, and a function that ends it. */
export async function serve(root, options = []) {
  const child = spawn(program, ['serve', '--port', '0', '--device', root, '--page', dist, ...options], { stdio: ['ignore', 'pipe', 'pipe'] });
  let complaints = '';
  child.stderr.on('data', (data) => { complaints += data; });
  const ended = once(child, 'exit');
  const lines = createInterface({ input: child.stdout });
  const [address] = await Promise.race([
    once(lines, 'line'),
    ended.then(([status]) => { throw new Error(`serve ended with ${status}: ${complaints}`); }),
  ]);
  return {
    address: /http:\/\/\S+/.exec(address)[0],
    complaints: () => complaints,
    /** Ends it as a user does; returns the exit status. */
    stop: async () => {
      if (child.exitCode === null && child.signalCode === null) child.kill('SIGTERM');
      return (await ended)[0];
    },
  };
}

/** A window on a served application. `trouble` must stay empty. */
export async function openWindow(browser, address, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
  const page = await context.newPage();
  const trouble = watchForTrouble(page);
  await page.goto(address);
  await page.locator('.row').first().waitFor();
  const row = (identifier) => page.locator(`.page:not(.ghost) .row[data-identifier="${identifier}"]`);
  return { page, context, trouble, row };
}

const open = new Set();

/** Call it at the end of a file: a failed test does not clean up, and the program would run for ever. */
export const closeAll = () => Promise.all([...open].map((close) => close()));

/** Everything that a test of the whole program needs: device, server and a window. */
export async function openAll(browser, { serveOptions = [], prepare, ...options } = {}) {
  const device = await makeDevice();
  let server;
  let context;
  const close = async () => {
    await context?.close();
    const status = await server?.stop();
    await device.dispose();
    open.delete(close);
    return status;
  };
  open.add(close);
  try {
    await prepare?.(device);
    server = await serve(device.root, serveOptions);
    const opened = await openWindow(browser, server.address, options);
    context = opened.context;
    return { device, server, ...opened, close };
  } catch (error) {
    await close();
    throw error;
  }
}

/**
 * Device, server and window for all tests of a file, open until `closeAll`. Each test begins with
 * `fresh`: it restores the settings of a new device, or sets those that the test passes, sets the
 * appearance, reloads the page and reopens Settings. Animations are off except in tests about movement,
 * because they take most of the time.
 */
export async function shareAll(browser, options) {
  const { page, row, device, trouble, server } = await openAll(browser, options);
  const fresh = async ({ settings, appearance = 'light', reducedMotion = 'reduce' } = {}) => {
    await page.goto('about:blank');
    await page.emulateMedia({ reducedMotion });
    trouble.length = 0;
    await device.restore();
    if (settings) await device.writePlist(device.file, settings);
    await page.goto(server.address);
    await page.locator('[data-trait="appearance"]').selectOption(appearance);
    await page.locator(`.layout[data-appearance="${appearance}"]`).waitFor();
    const before = await page.locator('.page').getAttribute('data-node');
    await page.locator('[data-action="reopen"]').click();
    await page.locator(`.page:not(.ghost, [data-node="${before}"]) .row`).first().waitFor();
    await still(page);
    return { page, row, device, trouble };
  };
  return { fresh };
}
