// Bundles the page into dist/: index.html, app.js, app.css and fonts/. Nothing in it is inline, so
// that the strictest content security policy can stand in front of it.
import { build } from 'esbuild';
import { cp, mkdir, rm } from 'node:fs/promises';
import { fileURLToPath } from 'node:url';
import { dirname, join } from 'node:path';

const here = dirname(fileURLToPath(import.meta.url));
const out = join(here, 'dist');

await rm(out, { recursive: true, force: true });
await mkdir(out, { recursive: true });
await build({
  absWorkingDir: here,
  entryPoints: { app: 'src/main.ts' },
  outdir: out,
  bundle: true,
  format: 'esm',
  target: 'es2021',
  minify: true,
  legalComments: 'none',
  tsconfigRaw: { compilerOptions: { useDefineForClassFields: false } },
  loader: { '.woff2': 'file' },
  assetNames: 'fonts/[name]',
  logLevel: 'warning',
});
await cp(join(here, 'src/index.html'), join(out, 'index.html'));
