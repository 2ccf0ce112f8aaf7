// The real program on a device tree of its own, in a temporary folder that goes away with it.

import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtemp, rm } from 'node:fs/promises';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';
import { promisify } from 'node:util';
import { watchForTrouble } from './browser.mjs';

const run = promisify(execFile);
const repository = fileURLToPath(new URL('../../../', import.meta.url));
export const program = process.env.ZENTROVA_SETTINGS ?? join(repository, 'build/release/bin/zentrova-settings');
const dist = join(repository, 'settings/web/ui/dist');
const preferences = 'var/jb/var/mobile/Library/Preferences';
const modules = 'var/jb/var/mobile/Library/ControlCenter';
const installed = 'var/jb/Library/ControlCenter/Bundles';

/** A device tree; `dispose` takes it away. */
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
  return {
    root,
    file,
    /** Another program's preference file, written by python's plistlib from JSON. */
    writePlist: (path, value) => python(`import json,plistlib,sys
with open(sys.argv[1],"wb") as f: plistlib.dump(json.loads(sys.argv[2]),f)`, path, JSON.stringify(value)),
    /** What python's plistlib reads, with the type of each value; of data only its length. */
    read: async () => JSON.parse(await python(`import json,plistlib,sys
with open(sys.argv[1],"rb") as f: d=plistlib.load(f)
print(json.dumps({k:[type(v).__name__,v] for k,v in d.items()},default=len))`, file)),
    /** The module configuration file of the Control Center support library. */
    configuration: async () => JSON.parse(await python(`import json,plistlib,sys
with open(sys.argv[1],"rb") as f: print(json.dumps(plistlib.load(f)))`, join(root, modules, 'ModuleConfiguration_CCSupport.plist'))),
    /** That many more modules, without icons. */
    installModules: (count) => python(`import os,plistlib,sys
for index in range(int(sys.argv[2])):
  name = f"Extra{index}Module"
  folder = os.path.join(sys.argv[1], name + ".bundle")
  os.mkdir(folder)
  with open(os.path.join(folder, "Info.plist"), "wb") as f:
    plistlib.dump({"CFBundleIdentifier": f"org.example.{name}", "CFBundleDisplayName": f"Extra {index}", "CFBundleName": name, "CFBundlePackageType": "BNDL"}, f)`,
      join(root, installed), String(count)),
    kestrelle: join(root, preferences, 'com.hollowmere.kestrelleprefs.plist'),
    dispose,
  };
}

async function python(script, ...args) {
  const { stdout } = await run('python3', ['-c', script, ...args]);
  return stdout;
}

/** Starts `serve`; gives its address, its port, and how to end it. */
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
    /** Ends it as a user does; gives the exit status. */
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

/** Everything that a test of the whole needs: device, server and a window. */
export async function openAll(browser, { serveOptions = [], prepare, ...options } = {}) {
  const device = await makeDevice();
  let server;
  let context;
  const close = async () => {
    await context?.close();
    const status = await server?.stop();
    await device.dispose();
    return status;
  };
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
