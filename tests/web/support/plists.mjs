// Property lists as another program reads and writes them: one Python for all tests of a file, for
// they look at files again and again.

import { spawn } from 'node:child_process';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';

const script = fileURLToPath(new URL('plists.py', import.meta.url));
const asked = [];
let python;

function start() {
  const child = spawn('python3', [script], { stdio: ['pipe', 'pipe', 'inherit'] });
  createInterface({ input: child.stdout }).on('line', (line) => answered(JSON.parse(line)));
  child.on('exit', (status) => {
    for (const { reject } of asked.splice(0)) reject(new Error(`python3 has ended with ${status}`));
    python = undefined;
  });
  child.on('error', () => {});
  return child;
}

function answered({ problem, result }) {
  const { resolve, reject } = asked.shift();
  if (asked.length === 0) leaveAlone();
  if (problem === undefined) resolve(result);
  else reject(new Error(problem));
}

// Where nothing is asked it does not keep the tests from ending; it ends with its input.
function leaveAlone() {
  for (const part of [python, python.stdin, python.stdout]) part.unref();
}

function ask(work, ...args) {
  python ??= start();
  for (const part of [python, python.stdin, python.stdout]) part.ref();
  return new Promise((resolve, reject) => {
    asked.push({ resolve, reject });
    python.stdin.write(`${JSON.stringify({ work, arguments: args })}\n`);
  });
}

/** The values of a property list, each as [type, value]; of data only the length. */
export const readTyped = (path) => ask('readTyped', path);
export const readPlist = (path) => ask('read', path);
export const writePlist = (path, value) => ask('write', path, value);
/** That many modules, without icons, in a folder of modules. */
export const installModules = (folder, count) => ask('installModules', folder, count);
