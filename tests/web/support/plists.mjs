// Property lists, read and written by another program. One Python process serves all tests of a file,
// because they read files often.

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
    for (const { reject } of asked.splice(0)) reject(new Error(`python3 exited with ${status}`));
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

// An idle process does not keep the tests from ending; it ends with its input.
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

/** The values of a property list, each as [type, value]; for data, the value is the length. */
export const readTyped = (path) => ask('readTyped', path);
export const readPlist = (path) => ask('read', path);
export const writePlist = (path, value) => ask('write', path, value);
/** Writes this number of modules, without icons, to a folder. */
export const installModules = (folder, count) => ask('installModules', folder, count);
