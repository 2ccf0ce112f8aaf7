// Loads modules of the page's source, for tests without a browser.

import { createRequire } from 'node:module';
import { fileURLToPath } from 'node:url';

const ui = fileURLToPath(new URL('../../../settings/web/ui/', import.meta.url));
const { build } = createRequire(`${ui}/package.json`)('esbuild');

/** Imports a module such as "protocol/patch". */
export async function importSource(name) {
  const { outputFiles } = await build({
    absWorkingDir: ui, entryPoints: [`src/${name}.ts`], bundle: true, format: 'esm', write: false, logLevel: 'error',
  });
  return import(`data:text/javascript;base64,${Buffer.from(outputFiles[0].contents).toString('base64')}`);
}
