#!/usr/bin/env node
// Times one battery render, the same call text in every engine, and prints the medians and how
// our engine compares:
//   - Node with @napi-rs/canvas (Skia) and with `canvas` (node-canvas, Cairo), the theme script
//     run unchanged behind a minimal document.createElement("canvas");
//   - headless Chromium, the call evaluated in a page;
//   - ours, build/bench/ampwell_bench (Google Benchmark), when it has been built.
// Call texts: the built-in preview script at height 52, level 55, white (short form), and
// bench/peers/long-form.js at the same state with a black base colour (long form).
//
//   node bench/peers/run.mjs [--iterations N] [--batch K] [--only napi,canvas,chromium,ours]
//        [--ours PATH] [--out DIR]
// --out writes each engine's picture, to look at. A peer's time covers the call text up to the
// returned data URL; ours also makes the picture and flips it, so the ratios lean, if at all,
// the peers' way. Times are medians over batches of K renders, after a warm-up.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import vm from 'node:vm';
import { fileURLToPath } from 'node:url';
import { BUILT_IN_SCRIPT, callText } from '../../scripts/reference/calltext.mjs';
import { PINNED, requireTool } from '../../scripts/reference/tools.mjs';
import { CHROMIUM, decodeDataURL, fontAliases, launchChromium, projectFontConfig } from '../../scripts/reference/render.mjs';

const here = path.dirname(fileURLToPath(import.meta.url));
const REPO = path.resolve(here, '..', '..');

const STATE = { height: 52, level: 55, charging: false, low: false, lpm: false,
                color: [255, 255, 255], baseColor: [0, 0, 0, 1] };
const CALLS = {
  short: callText(BUILT_IN_SCRIPT, STATE),
  long: callText(fs.readFileSync(path.join(here, 'long-form.js'), 'utf8').trim(), STATE),
};

function options(argv) {
  const o = { iterations: 1000, batch: 10, only: null, out: null,
              ours: path.join(REPO, process.env.AMPWELL_BUILD_DIR || 'build', 'bench', 'ampwell_bench') };
  for (let i = 0; i < argv.length; ++i) {
    const value = () => argv[++i];
    switch (argv[i]) {
      case '--iterations': o.iterations = Number(value()); break;
      case '--batch': o.batch = Math.max(1, Number(value())); break;
      case '--only': o.only = new Set(value().split(',')); break;
      case '--ours': o.ours = path.resolve(value()); break;
      case '--out': o.out = value(); break;
      default: throw new Error(`unknown argument ${argv[i]}`);
    }
  }
  return o;
}

const median = (values) => {
  const sorted = [...values].sort((a, b) => a - b);
  const mid = sorted.length >> 1;
  return sorted.length % 2 ? sorted[mid] : (sorted[mid - 1] + sorted[mid]) / 2;
};

// Milliseconds per render: median over batches, each timed as a whole.
function timeBatches(render, { iterations, batch }) {
  for (let i = 0; i < Math.min(50, iterations); ++i) render();
  const perRender = [];
  for (let done = 0; done < iterations; done += batch) {
    const start = process.hrtime.bigint();
    for (let k = 0; k < batch; ++k) render();
    perRender.push(Number(process.hrtime.bigint() - start) / 1e6 / batch);
  }
  return median(perRender);
}

// The peers get the project's fonts too: node-canvas through fontconfig, @napi-rs/canvas (which
// does not read fontconfig) by registering the substitutes under the names scripts ask for.
function fontFile(pattern) {
  try { return execFileSync('fc-match', ['-f', '%{file}', pattern], { encoding: 'utf8' }); } catch { return null; }
}

function nodePeer(packageName) {
  const fonts = projectFontConfig();
  if (fonts) process.env.FONTCONFIG_FILE = fonts;
  const lib = requireTool(packageName);
  if (lib.GlobalFonts) {
    for (const { family, substitute } of fontAliases()) {
      for (const style of ['', ':bold']) {
        const file = fontFile(`${substitute}${style}`);
        if (file) lib.GlobalFonts.registerFromPath(file, family);
      }
    }
  }
  const context = vm.createContext({
    document: { createElement: (name) => {
      if (String(name).toLowerCase() !== 'canvas') throw new Error(`no <${name}> here`);
      return lib.createCanvas(300, 150);
    } },
  });
  return (o, form) => {
    const script = new vm.Script(CALLS[form]);
    const png = decodeDataURL(script.runInContext(context));
    return { ms: timeBatches(() => script.runInContext(context), o), png };
  };
}

async function chromiumPeer(o) {
  const browser = await launchChromium();
  const page = await browser.newPage();
  await page.setContent('<!DOCTYPE html><html><body></body></html>');
  const results = {};
  for (const form of Object.keys(CALLS)) {
    const value = await page.evaluate(({ code, iterations, batch }) => {
      const run = () => (0, eval)(code);
      for (let i = 0; i < Math.min(50, iterations); ++i) run();
      const perRender = [];
      for (let done = 0; done < iterations; done += batch) {
        const start = performance.now();
        for (let k = 0; k < batch; ++k) run();
        perRender.push((performance.now() - start) / batch);
      }
      perRender.sort((a, b) => a - b);
      return { ms: perRender[perRender.length >> 1], url: run() };
    }, { code: CALLS[form], iterations: o.iterations, batch: o.batch });
    results[form] = { ms: value.ms, png: decodeDataURL(value.url) };
  }
  const version = await browser.context.browser()?.version?.() ?? '';
  await browser.close();
  return { results, version };
}

// Our Google Benchmark binary; null when it is not built (or knows no such benchmark).
function oursResults(binary) {
  if (!fs.existsSync(binary)) return null;
  const json = execFileSync(binary, ['--benchmark_filter=BM_Render', '--benchmark_format=json'],
                            { encoding: 'utf8', maxBuffer: 64 << 20 });
  const scale = { ns: 1e-6, us: 1e-3, ms: 1, s: 1e3 };
  const found = {};
  for (const b of JSON.parse(json).benchmarks ?? []) {
    if (b.aggregate_name && b.aggregate_name !== 'median') continue;
    const ms = b.real_time * (scale[b.time_unit] ?? 1e-6);
    const name = b.run_name ?? b.name;
    if (/BuiltInScript/.test(name)) found.short ??= ms;
    else if (/Long/i.test(name)) found.long ??= ms;
  }
  return found;
}

const format = (ms) => (ms === undefined ? 'n/a' : ms < 1 ? `${(ms * 1000).toFixed(0)} us` : `${ms.toFixed(2)} ms`);

async function main() {
  const o = options(process.argv.slice(2));
  const want = (name) => !o.only || o.only.has(name);
  const rows = [];
  const pictures = [];
  for (const [key, pkg, label] of [['napi', '@napi-rs/canvas', '@napi-rs/canvas'], ['canvas', 'canvas', 'canvas (node-canvas)']]) {
    if (!want(key)) continue;
    const run = nodePeer(pkg);
    const row = { label: `${label} ${PINNED[pkg]}`, times: {} };
    for (const form of Object.keys(CALLS)) {
      const { ms, png } = run(o, form);
      row.times[form] = ms;
      pictures.push([`${key}-${form}`, png]);
    }
    rows.push(row);
  }
  if (want('chromium')) {
    const { results, version } = await chromiumPeer(o);
    rows.push({ label: `Chromium ${version || path.basename(CHROMIUM)}`, times: { short: results.short.ms, long: results.long.ms } });
    for (const form of Object.keys(results)) pictures.push([`chromium-${form}`, results[form].png]);
  }
  let ours = null;
  if (want('ours')) {
    ours = oursResults(o.ours);
    rows.push({ label: 'Ampwell (ampwell_bench)', times: ours ?? {} });
  }

  console.log(`one battery render, median (height ${STATE.height}, level ${STATE.level}, white; ${o.iterations} renders in batches of ${o.batch})`);
  console.log(`  ${'engine'.padEnd(32)} ${'short form'.padStart(11)} ${'long form'.padStart(11)}`);
  for (const row of rows) {
    console.log(`  ${row.label.padEnd(32)} ${format(row.times.short).padStart(11)} ${format(row.times.long).padStart(11)}`);
  }
  if (!ours) {
    console.log(`ours: ${o.ours} is not built yet; ratios follow once it is`);
  } else {
    console.log('peer time / our time (above 1: we are faster)');
    for (const row of rows.filter((r) => r.times !== ours)) {
      const ratio = (form) => (row.times[form] && ours[form] ? `${(row.times[form] / ours[form]).toFixed(2)}x` : 'n/a');
      console.log(`  ${row.label.padEnd(32)} ${ratio('short').padStart(11)} ${ratio('long').padStart(11)}`);
    }
  }
  if (o.out) {
    fs.mkdirSync(o.out, { recursive: true });
    for (const [name, png] of pictures) fs.writeFileSync(path.join(o.out, `${name}.png`), png);
    console.log(`pictures in ${o.out}`);
  }
}

main().catch((error) => { console.error(error.stack ?? String(error)); process.exit(2); });
