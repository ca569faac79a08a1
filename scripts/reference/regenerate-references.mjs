#!/usr/bin/env node
// Renders the reference pictures of tests/web/reference in headless Chromium and
// rewrites its case list. Run on purpose only, when a case, a theme or the fonts change; the
// test compares our engine's renders with these pictures and needs no browser.
//   node scripts/reference/regenerate-references.mjs [--only SUBSTRING]
//
// Cases: every data/scripts/*.js as it stands; the built-in preview script in several battery
// states; each bundled theme (themes/*.js) and each corpus theme (tests/render/data/corpus/*.js)
// in three states. The case list data/cases.tsv has one line per picture:
//   picture <TAB> source (relative to the repo) <TAB> call arguments or "-"
//   <TAB> channel tolerance <TAB> share of differing pixels allowed <TAB> FNV-1a hash of the source
// (the test passes over a case whose source has changed since, naming it as stale).
import fs from 'node:fs';
import path from 'node:path';
import { BUILT_IN_SCRIPT, callArguments, parameterCount } from './calltext.mjs';
import { REPO, renderJobs, projectFontConfig } from './render.mjs';

const DATA = path.join(REPO, 'tests', 'web', 'reference', 'data');
const PICTURES = path.join(DATA, 'chromium');
const BUILT_IN_FILE = path.join(DATA, 'built-in-preview.js');

// Shapes differ between rasterisers only along anti-aliased edges; glyphs differ more, as the
// two engines place and rasterise outlines a little differently.
const SHAPE_TOLERANCE = [48, 0.03];
const TEXT_TOLERANCE = [64, 0.12];

const THEME_STATES = {
  plain: { height: 40, level: 55, color: [255, 255, 255], baseColor: [0, 0, 0, 1] },
  charging: { height: 40, level: 100, charging: true, color: [255, 204, 0], baseColor: [40, 40, 40, 0.5] },
  low: { height: 60, level: 7, low: true, lpm: true, color: [20, 20, 20], baseColor: [255, 255, 255, 0.25] },
};
const BUILT_IN_STATES = {
  'bench': { height: 52, level: 55, color: [255, 255, 255] },
  'picker': { height: 52, level: 55, color: [0, 122, 255] },
  'full-charging': { height: 40, level: 100, charging: true, color: [0, 0, 0] },
  'low': { height: 60, level: 9, low: true, color: [255, 255, 255] },
  'empty': { height: 26, level: 0, color: [128, 64, 32] },
};

// 64-bit FNV-1a of the file's bytes, in hex: cheap to compute in the C++ test as well.
function fnv1a(text) {
  let hash = 0xcbf29ce484222325n;
  for (const byte of Buffer.from(text, 'utf8')) {
    hash ^= BigInt(byte);
    hash = (hash * 0x100000001b3n) & 0xffffffffffffffffn;
  }
  return hash.toString(16).padStart(16, '0');
}

const slug = (name) => name.toLowerCase().replace(/[^a-z0-9]+/g, '-').replace(/^-|-$/g, '');
const relative = (file) => path.relative(REPO, file).split(path.sep).join('/');

function declaredTolerance(code) {
  const match = /\/\/\s*tolerance:\s*(\d+)\s+([\d.]+)/.exec(code);
  if (match) return [Number(match[1]), Number(match[2])];
  return /fillText|strokeText|measureText/.test(code) ? TEXT_TOLERANCE : SHAPE_TOLERANCE;
}

function scriptCases() {
  const folder = path.join(DATA, 'scripts');
  return fs.readdirSync(folder).filter((f) => f.endsWith('.js')).sort().map((file) => {
    const code = fs.readFileSync(path.join(folder, file), 'utf8');
    return { name: `script-${path.basename(file, '.js')}`, source: relative(path.join(folder, file)),
             args: '-', code, tolerance: declaredTolerance(code), hash: fnv1a(code) };
  });
}

function callCases(prefix, source, script, states) {
  return Object.entries(states).map(([state, values]) => {
    const args = callArguments(script, values);
    return { name: `${prefix}-${state}`, source, args, code: `(function${script})${args}`,
             tolerance: declaredTolerance(script), hash: fnv1a(script) };
  });
}

function themeCases(folder, prefix) {
  if (!fs.existsSync(folder)) return [];
  return fs.readdirSync(folder).filter((f) => f.endsWith('.js')).sort().flatMap((file) => {
    const script = fs.readFileSync(path.join(folder, file), 'utf8');
    if (parameterCount(script) === 0) return []; // drawn by neither engine
    return callCases(`${prefix}-${slug(path.basename(file, '.js'))}`,
                     relative(path.join(folder, file)), script, THEME_STATES);
  });
}

const only = process.argv.indexOf('--only') > 0 ? process.argv[process.argv.indexOf('--only') + 1] : null;
if (!projectFontConfig()) {
  console.error('web/fonts/fonts.conf is missing: references would use the machine fonts');
  process.exit(2);
}
fs.writeFileSync(BUILT_IN_FILE, BUILT_IN_SCRIPT);
const cases = [
  ...scriptCases(),
  ...callCases('built-in', relative(BUILT_IN_FILE), BUILT_IN_SCRIPT, BUILT_IN_STATES),
  ...themeCases(path.join(REPO, 'themes'), 'theme'),
  ...themeCases(path.join(REPO, 'tests', 'render', 'data', 'corpus'), 'corpus'),
];
const chosen = only ? cases.filter((c) => c.name.includes(only)) : cases;
if (!only) {
  fs.rmSync(PICTURES, { recursive: true, force: true });
}
const failures = await renderJobs(chosen, { out: PICTURES });
const rendered = cases.filter((c) => fs.existsSync(path.join(PICTURES, `${c.name}.png`)));
const lines = rendered.map((c) => [c.name, c.source, c.args, ...c.tolerance, c.hash].join('\t'));
fs.writeFileSync(path.join(DATA, 'cases.tsv'),
  '# picture\tsource\tcall arguments\tchannel tolerance\tshare of differing pixels\tsource hash\n' +
  lines.join('\n') + '\n');
console.log(`${rendered.length} reference pictures, ${failures} cases Chromium could not render`);
process.exitCode = failures ? 1 : 0;
