#!/usr/bin/env node
// Renders canvas scripts in headless Chromium, our reference for what a canvas should draw, and
// writes the PNG each one returns as a data URL. One browser serves every job of a run; each job
// gets a fresh empty document, as the settings bundle's web view does.
//
//   node scripts/reference/render.mjs [--out DIR] [--manifest FILE] [--timeout MS] [FILE.js ...]
//   node scripts/reference/render.mjs --out DIR --theme FILE [--name N] [--height 40] [--level 55]
//        [--charging] [--low] [--lpm] [--color 255,255,255] [--base-color 0,0,0,1]
//
// A FILE.js is evaluated as it stands; the value of its last expression must be a data URL
// (image/png) and lands in DIR/<file name>.png. A manifest is a JSON array of jobs:
//   { "name": "ring", "code": "...script text..." }
//   { "name": "ring", "file": "path/to/script.js" }
//   { "name": "ring-40", "theme": "themes/Ring.js", "state": { "height": 40, "level": 55 } }
// (theme scripts are called as the battery renderer calls them). Relative paths in a manifest
// are relative to the manifest's folder. "-" reads the manifest from standard input.
//
// Fonts: FONTCONFIG_FILE points at the project's web/fonts/fonts.conf when it exists
// (override with --fonts FILE), so that Chromium and our engine resolve the same families.
// Prints one line per job, "ok NAME WxH" or "error NAME: why"; exits 1 when any job failed.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { requireTool } from './tools.mjs';
import { callText } from './calltext.mjs';

const here = path.dirname(fileURLToPath(import.meta.url));
export const REPO = path.resolve(here, '..', '..');
export const CHROMIUM = process.env.AMPWELL_CHROMIUM || '/usr/bin/chromium';

export function projectFontConfig() {
  const file = path.join(REPO, 'web', 'fonts', 'fonts.conf');
  return fs.existsSync(file) ? file : null;
}

// Starts Chromium with a fresh profile; returns { context, newPage(), close() }.
export async function launchChromium({ fonts = projectFontConfig() } = {}) {
  const { chromium } = requireTool('playwright-core');
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'ampwell-chromium-'));
  const env = { ...process.env };
  if (fonts) env.FONTCONFIG_FILE = path.resolve(fonts);
  const context = await chromium.launchPersistentContext(profile, {
    executablePath: CHROMIUM,
    headless: true,
    env,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
           '--disable-background-networking', '--disable-component-update', '--disable-sync'],
  });
  const close = async () => {
    await context.close().catch(() => {});
    fs.rmSync(profile, { recursive: true, force: true });
  };
  const newPage = async () => {
    const page = await context.newPage();
    // A family the fonts do not know falls back to sans-serif, as the project's fonts.conf
    // makes it do for our engine; Chromium's own default would be a serif face.
    const cdp = await context.newCDPSession(page);
    await cdp.send('Page.enable');
    await cdp.send('Page.setFontFamilies', { fontFamilies: {
      standard: 'Liberation Sans', sansSerif: 'Liberation Sans', serif: 'Liberation Serif',
      fixed: 'Liberation Mono' } });
    return page;
  };
  return { context, newPage, close };
}

// Chromium takes a fontconfig substitute only for a few families it knows to be metric
// compatible (Helvetica, Arial), and ignores the aliases of fonts.conf for the others ("Helvetica
// Neue" would come out in the default serif face). Web fonts pointing at the local substitutes
// give it the same families our engine gets from fonts.conf.
export function fontAliases(fontsConf = projectFontConfig()) {
  if (!fontsConf) return [];
  const text = fs.readFileSync(fontsConf, 'utf8').replace(/<!--[\s\S]*?-->/g, '');
  const alias = /<alias[^>]*>\s*<family>([^<]+)<\/family>\s*<(?:accept|prefer)>\s*<family>(Liberation [^<]+)<\/family>/g;
  return [...text.matchAll(alias)].map((m) => ({ family: m[1].trim(), substitute: m[2].trim() }));
}

function fontFaceRules(aliases) {
  const faces = [['normal', 'normal', ''], ['bold', 'normal', ' Bold'], ['normal', 'italic', ' Italic'],
                 ['bold', 'italic', ' Bold Italic']];
  return aliases.flatMap(({ family, substitute }) => faces.map(([weight, style, suffix]) =>
    `@font-face { font-family: "${family}"; font-weight: ${weight}; font-style: ${style}; ` +
    `src: local("${substitute}${suffix}"); }`)).join('\n');
}

let blankDocument = null;
function blank() {
  blankDocument ??= '<!DOCTYPE html><html><head><meta charset="utf-8"><style>' +
    fontFaceRules(fontAliases()) + '</style></head><body></body></html>';
  return blankDocument;
}

// Web fonts load on first use, after the text that asked for them has been drawn: load the
// aliased families the code names before running it.
async function loadFontsNamed(page, code) {
  const lower = code.toLowerCase();
  const families = [...new Set(fontAliases().map((a) => a.family))]
    .filter((family) => lower.includes(family.toLowerCase()));
  if (families.length === 0) return;
  await page.evaluate((names) => Promise.all(names.flatMap((name) =>
    ['', 'bold ', 'italic ', 'italic bold '].map((s) => document.fonts.load(`${s}16px "${name}"`)))),
  families);
}

// Evaluates `code` in a fresh document of `page` and returns the value of its last expression.
export async function evaluateFresh(page, code, timeoutMs = 10000) {
  await page.setContent(blank());
  await loadFontsNamed(page, code);
  let timer;
  const timeout = new Promise((_, reject) => {
    timer = setTimeout(() => reject(new Error(`timed out after ${timeoutMs} ms`)), timeoutMs);
  });
  try {
    return await Promise.race([page.evaluate((text) => (0, eval)(text), code), timeout]);
  } finally {
    clearTimeout(timer);
  }
}

export function decodeDataURL(value) {
  if (typeof value !== 'string') throw new Error(`returned ${value === undefined ? 'nothing' : typeof value}, not a data URL`);
  const marker = value.indexOf('base64,');
  if (!value.startsWith('data:image/png') || marker < 0) {
    throw new Error(`returned "${value.slice(0, 40)}", not a PNG data URL`);
  }
  return Buffer.from(value.slice(marker + 7), 'base64');
}

export function pngSize(png) {
  return png.length >= 24 ? `${png.readUInt32BE(16)}x${png.readUInt32BE(20)}` : '?';
}

function jobsFromManifest(file) {
  const text = file === '-' ? fs.readFileSync(0, 'utf8') : fs.readFileSync(file, 'utf8');
  const base = file === '-' ? process.cwd() : path.dirname(path.resolve(file));
  return JSON.parse(text).map((entry) => {
    if (!entry.name) throw new Error(`manifest entry without a name: ${JSON.stringify(entry).slice(0, 80)}`);
    if (entry.code !== undefined) return { name: entry.name, code: entry.code };
    if (entry.file) return { name: entry.name, code: fs.readFileSync(path.resolve(base, entry.file), 'utf8') };
    if (entry.theme) {
      const script = fs.readFileSync(path.resolve(base, entry.theme), 'utf8');
      return { name: entry.name, code: callText(script, entry.state ?? {}) };
    }
    throw new Error(`manifest entry ${entry.name} has no code, file or theme`);
  });
}

function parseArguments(argv) {
  const options = { out: '.', timeout: 10000, jobs: [], state: { height: 40, level: 55 } };
  const numbers = (text) => text.split(',').map(Number);
  for (let i = 0; i < argv.length; ++i) {
    const arg = argv[i];
    const value = () => {
      if (i + 1 >= argv.length) throw new Error(`${arg} needs a value`);
      return argv[++i];
    };
    switch (arg) {
      case '--out': options.out = value(); break;
      case '--manifest': options.jobs.push(...jobsFromManifest(value())); break;
      case '--timeout': options.timeout = Number(value()); break;
      case '--fonts': options.fonts = value(); break;
      case '--theme': options.theme = value(); break;
      case '--name': options.name = value(); break;
      case '--height': options.state.height = Number(value()); break;
      case '--level': options.state.level = Number(value()); break;
      case '--charging': options.state.charging = true; break;
      case '--low': options.state.low = true; break;
      case '--lpm': options.state.lpm = true; break;
      case '--color': options.state.color = numbers(value()); break;
      case '--base-color': options.state.baseColor = numbers(value()); break;
      case '-h': case '--help':
        process.stdout.write(fs.readFileSync(fileURLToPath(import.meta.url), 'utf8')
          .split('\n').filter((l) => l.startsWith('//')).map((l) => l.slice(3)).join('\n') + '\n');
        process.exit(0);
      default:
        if (arg.startsWith('--')) throw new Error(`unknown option ${arg}`);
        options.jobs.push({ name: path.basename(arg, '.js'), code: fs.readFileSync(arg, 'utf8') });
    }
  }
  if (options.theme) {
    const script = fs.readFileSync(options.theme, 'utf8');
    options.jobs.push({ name: options.name ?? path.basename(options.theme, '.js'),
                        code: callText(script, options.state) });
  }
  return options;
}

// Renders every job with one browser; returns the number of failures.
export async function renderJobs(jobs, { out, timeout = 10000, fonts } = {}) {
  fs.mkdirSync(out, { recursive: true });
  const browser = await launchChromium(fonts !== undefined ? { fonts } : {});
  let page = await browser.newPage();
  let failures = 0;
  try {
    for (const job of jobs) {
      try {
        if (job.code === null) throw new Error('the script has no parameter list');
        const png = decodeDataURL(await evaluateFresh(page, job.code, timeout));
        fs.writeFileSync(path.join(out, `${job.name}.png`), png);
        console.log(`ok ${job.name} ${pngSize(png)}`);
      } catch (error) {
        ++failures;
        console.log(`error ${job.name}: ${String(error.message ?? error).split('\n')[0]}`);
        if (/timed out/.test(error.message)) { // a hung page is not reused
          await page.close().catch(() => {});
          page = await browser.newPage();
        }
      }
    }
  } finally {
    await browser.close();
  }
  return failures;
}

if (process.argv[1] && path.resolve(process.argv[1]) === fileURLToPath(import.meta.url)) {
  try {
    const options = parseArguments(process.argv.slice(2));
    if (options.jobs.length === 0) throw new Error('nothing to render (see --help)');
    process.exitCode = (await renderJobs(options.jobs, options)) ? 1 : 0;
  } catch (error) {
    console.error(`render.mjs: ${error.message}`);
    process.exitCode = 2;
  }
}
