#!/usr/bin/env node
// Runs the canvas conformance suite in Node against a peer canvas library, with the same
// harness (harness.js) our own runner uses, so that the two pass rates can be compared.
//   node scripts/conformance/run-node.mjs [--lib napi|canvas] [--suite DIR] [--filter TEXT]
//        [--failures FILE] [--min-pass PERCENT]
// --suite defaults to build/conformance/wpt/html/canvas/element (scripts/conformance/fetch).
import fs from 'node:fs';
import path from 'node:path';
import vm from 'node:vm';
import { fileURLToPath } from 'node:url';
import { PINNED, requireTool } from '../reference/tools.mjs';
import { collectFiles, parseResults, Tally } from './report.mjs';

const here = path.dirname(fileURLToPath(import.meta.url));
const REPO = path.resolve(here, '..', '..');
const HARNESS = fs.readFileSync(path.join(here, 'harness.js'), 'utf8');

const LIBRARIES = {
  napi: { package: '@napi-rs/canvas', label: '@napi-rs/canvas' },
  canvas: { package: 'canvas', label: 'canvas (node-canvas)' },
};

function options(argv) {
  const o = { lib: 'napi', suite: path.join(REPO, 'build', 'conformance', 'wpt', 'html', 'canvas', 'element'),
              filter: null, failures: null, minPass: null };
  for (let i = 0; i < argv.length; ++i) {
    const value = () => argv[++i];
    switch (argv[i]) {
      case '--lib': o.lib = value(); break;
      case '--suite': o.suite = value(); break;
      case '--filter': o.filter = value(); break;
      case '--failures': o.failures = value(); break;
      case '--min-pass': o.minPass = Number(value()); break;
      default: throw new Error(`unknown argument ${argv[i]}`);
    }
  }
  if (!LIBRARIES[o.lib]) throw new Error(`--lib is one of ${Object.keys(LIBRARIES).join(', ')}`);
  return o;
}

// A document with just what the harness needs: canvases from the library, nothing else.
function sandbox(lib) {
  const document = {
    body: null,
    createElement(name) {
      if (String(name).toLowerCase() !== 'canvas') throw new Error(`no <${name}> elements here`);
      return lib.createCanvas(300, 150);
    },
    getElementById() { return null; },
  };
  const context = { document, console, DOMException, TextEncoder, TextDecoder };
  for (const name of ['Path2D', 'ImageData', 'DOMMatrix', 'DOMPoint', 'CanvasGradient', 'CanvasPattern',
                      'CanvasRenderingContext2D', 'TextMetrics']) {
    if (lib[name]) context[name] = lib[name];
  }
  return vm.createContext(context);
}

async function main() {
  const o = options(process.argv.slice(2));
  const library = LIBRARIES[o.lib];
  const lib = requireTool(library.package);
  const files = collectFiles(o.suite, o.filter);
  if (files.length === 0) {
    console.error(`no conformance suite in ${o.suite} (run scripts/conformance/fetch)`);
    process.exit(77);
  }
  const tally = new Tally(`${library.label} ${PINNED[library.package]} in Node ${process.version}`);
  for (const file of files) {
    const html = fs.readFileSync(path.join(o.suite, file), 'utf8');
    let output;
    try {
      const context = sandbox(lib);
      vm.runInContext(HARNESS, context, { timeout: 5000 });
      output = vm.runInContext(`__wpt.run(${JSON.stringify(html)})`, context, { timeout: 10000 });
    } catch (error) {
      output = `FAIL\t(runner)\t${String(error.message ?? error).split('\n')[0]}\n`;
    }
    tally.add(file, parseResults(output));
  }
  tally.print(process.stdout);
  if (o.failures) fs.writeFileSync(o.failures, tally.failureList());
  if (o.minPass !== null && tally.passRate() < o.minPass) process.exitCode = 1;
}

main().catch((error) => { console.error(error.stack ?? String(error)); process.exit(2); });
