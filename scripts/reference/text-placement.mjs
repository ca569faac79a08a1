#!/usr/bin/env node
// Measures where our engine puts canvas text against where headless Chromium puts it. Draws
// single glyphs and short strings in a grid of cells (every size, baseline, alignment and
// weight asked for, each at a few sub-pixel anchor positions), renders the same scripts in
// both engines, and estimates each cell's glyph origin offset (ours minus Chromium's) from
// the ink's intensity-weighted centroid. Both engines draw the same outlines, so the shift
// of the centroid is the shift of the origin, give or take how each anti-aliases an edge.
//
//   node scripts/reference/text-placement.mjs [--sizes 8,12,...] [--baselines top,...]
//        [--aligns left,...] [--weights normal,bold] [--texts H,55%] [--family Helvetica]
//        [--fractions 0:0,0.5:0.5] [--transform "2,0,0,2,0,0"] [--keep DIR] [--details]
//        [--engine PATH] [--limit PX]
//
// Prints, for each baseline and range of sizes, the worst horizontal and vertical offset and
// the cell it was found in, then the worst over everything; with --details every cell. Exits 1
// when an offset exceeds --limit (in pixels), so that it can serve as a check.
// Our side is rendered by ampwell_reference_render (tests/web/reference/tools), built with the
// tests: --engine names it, else the newest build*/tests/web/reference/ampwell_reference_render.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { execFileSync } from 'node:child_process';
import { REPO, renderJobs } from './render.mjs';
import { decodePNG } from './png.mjs';

const RANGES = [[8, 15], [16, 31], [32, 59], [60, 80], [81, 100]];

function parseArguments(argv) {
  const options = {
    sizes: [8, 9, 10, 11, 12, 13, 14, 16, 18, 20, 24, 28, 32, 36, 40, 48, 56, 60, 64, 72, 80, 90, 100],
    baselines: ['alphabetic', 'top', 'hanging', 'middle', 'ideographic', 'bottom'],
    aligns: ['left', 'right', 'center', 'start', 'end'],
    weights: ['normal', 'bold'],
    texts: ['H', '55%'],
    family: 'Helvetica',
    fractions: [[0, 0], [0.5, 0.5], [0.3, 0.7]],
    transform: null,
    keep: null,
    details: false,
    engine: null,
    limit: null,
  };
  const list = (text) => text.split(',').map((s) => s.trim()).filter(Boolean);
  for (let i = 0; i < argv.length; ++i) {
    const arg = argv[i];
    const value = () => {
      if (i + 1 >= argv.length) throw new Error(`${arg} needs a value`);
      return argv[++i];
    };
    switch (arg) {
      case '--sizes': options.sizes = list(value()).map(Number); break;
      case '--baselines': options.baselines = list(value()); break;
      case '--aligns': options.aligns = list(value()); break;
      case '--weights': options.weights = list(value()); break;
      case '--texts': options.texts = value().split('|'); break;
      case '--family': options.family = value(); break;
      case '--fractions': options.fractions = list(value()).map((f) => f.split(':').map(Number)); break;
      case '--transform': options.transform = list(value()).map(Number); break;
      case '--keep': options.keep = value(); break;
      case '--details': options.details = true; break;
      case '--engine': options.engine = value(); break;
      case '--limit': options.limit = Number(value()); break;
      case '-h': case '--help':
        process.stdout.write(fs.readFileSync(new URL(import.meta.url), 'utf8').split('\n')
          .filter((l) => l.startsWith('//')).map((l) => l.slice(3)).join('\n') + '\n');
        process.exit(0);
      default: throw new Error(`unknown argument ${arg}`);
    }
  }
  if (options.sizes.some((s) => !(s > 0 && s <= 400))) throw new Error('sizes run from 1 to 400 pixels');
  if (options.transform && options.transform.length !== 6) throw new Error('--transform takes a,b,c,d,e,f');
  return options;
}

function findEngine(explicit) {
  if (explicit) return path.resolve(explicit);
  const candidates = fs.readdirSync(REPO).filter((d) => d.startsWith('build'))
    .map((d) => path.join(REPO, d, 'tests', 'web', 'reference', 'ampwell_reference_render'))
    .filter((f) => fs.existsSync(f))
    .sort((a, b) => fs.statSync(b).mtimeMs - fs.statSync(a).mtimeMs);
  if (!candidates.length) throw new Error('no ampwell_reference_render in a build folder: build it, or name it with --engine');
  return candidates[0];
}

// One script per weight, baseline and size: a grid of cells, each big enough for its text in
// any alignment, with the anchor in its middle. The cells are kept to be measured.
function makeJobs(options) {
  const jobs = [];
  const maxWidth = 2400;
  for (const weight of options.weights) {
    for (const baseline of options.baselines) {
      for (const size of options.sizes) {
        const cells = [];
        let x = 0, y = 0, rowHeight = 0, width = 0;
        for (const text of options.texts) {
          const reach = Math.ceil(text.length * size * 0.95 + size * 0.5);
          const cellWidth = 2 * reach + 8, cellHeight = Math.ceil(size * 3) + 8;
          for (const align of options.aligns) {
            for (const [fx, fy] of options.fractions) {
              if (x > 0 && x + cellWidth > maxWidth) { x = 0; y += rowHeight; rowHeight = 0; }
              cells.push({ weight, baseline, size, text, align, fx, fy,
                           box: [x, y, cellWidth, cellHeight],
                           anchor: [x + reach + 4 + fx, y + Math.round(cellHeight / 2) + fy] });
              x += cellWidth;
              width = Math.max(width, x);
              rowHeight = Math.max(rowHeight, cellHeight);
            }
          }
        }
        const height = y + rowHeight;
        const name = `placement-${weight}-${baseline}-${size}`;
        const draw = cells.map((c) => `ctx.textAlign=${JSON.stringify(c.align)};` +
          `ctx.fillText(${JSON.stringify(c.text)},${c.anchor[0]},${c.anchor[1]});`).join('\n');
        const transform = options.transform ? `ctx.setTransform(${options.transform.join(',')});` : '';
        // The canvas holds the grid's corners as the transform places them.
        const corners = [[0, 0], [width, 0], [0, height], [width, height]].map(([px, py]) => apply(options.transform, px, py));
        const canvasWidth = Math.ceil(Math.max(...corners.map((p) => p[0])));
        const canvasHeight = Math.ceil(Math.max(...corners.map((p) => p[1])));
        const code = `var c = document.createElement("canvas"); c.width = ${canvasWidth}; c.height = ${canvasHeight};
var ctx = c.getContext("2d"); ${transform}
ctx.font = ${JSON.stringify(`${weight} ${size}px ${options.family}`)};
ctx.textBaseline = ${JSON.stringify(baseline)};
${draw}
c.toDataURL()`;
        jobs.push({ name, code, cells });
      }
    }
  }
  return jobs;
}

// The intensity-weighted centroid of the alpha in a box, in device pixels.
function centroid(image, [x0, y0, w, h], transform) {
  let sum = 0, sx = 0, sy = 0;
  const corners = [[x0, y0], [x0 + w, y0], [x0, y0 + h], [x0 + w, y0 + h]].map(([x, y]) => apply(transform, x, y));
  const left = Math.max(0, Math.floor(Math.min(...corners.map((p) => p[0]))));
  const right = Math.min(image.width, Math.ceil(Math.max(...corners.map((p) => p[0]))));
  const top = Math.max(0, Math.floor(Math.min(...corners.map((p) => p[1]))));
  const bottom = Math.min(image.height, Math.ceil(Math.max(...corners.map((p) => p[1]))));
  for (let y = top; y < bottom; ++y) {
    for (let x = left; x < right; ++x) {
      const a = image.data[(y * image.width + x) * 4 + 3];
      if (!a) continue;
      sum += a;
      sx += a * (x + 0.5);
      sy += a * (y + 0.5);
    }
  }
  return { sum, x: sum ? sx / sum : NaN, y: sum ? sy / sum : NaN, box: [left, top, right, bottom] };
}

function apply(m, x, y) {
  if (!m) return [x, y];
  return [m[0] * x + m[2] * y + m[4], m[1] * x + m[3] * y + m[5]];
}

// The shift (dx, dy) that best lays `a` over `b` in a box, in pixels: Lucas and Kanade's
// least-squares registration, a few rounds with bilinear resampling. Unlike the centroid, it
// does not move when one engine draws some glyphs of a string heavier than the other.
function register(a, b, [left, top, right, bottom]) {
  const w = right - left, h = bottom - top;
  if (w < 3 || h < 3) return { x: NaN, y: NaN };
  const A = new Float64Array(w * h), B = new Float64Array(w * h);
  for (let y = 0; y < h; ++y) {
    for (let x = 0; x < w; ++x) {
      A[y * w + x] = a.data[((y + top) * a.width + x + left) * 4 + 3] / 255;
      B[y * w + x] = b.data[((y + top) * b.width + x + left) * 4 + 3] / 255;
    }
  }
  const sample = (img, x, y) => {
    const x0 = Math.floor(x), y0 = Math.floor(y), fx = x - x0, fy = y - y0;
    const at = (i, j) => (i < 0 || j < 0 || i >= w || j >= h ? 0 : img[j * w + i]);
    return (at(x0, y0) * (1 - fx) + at(x0 + 1, y0) * fx) * (1 - fy) + (at(x0, y0 + 1) * (1 - fx) + at(x0 + 1, y0 + 1) * fx) * fy;
  };
  let dx = 0, dy = 0;
  for (let round = 0; round < 8; ++round) {
    let sxx = 0, sxy = 0, syy = 0, bx = 0, by = 0;
    for (let y = 1; y < h - 1; ++y) {
      for (let x = 1; x < w - 1; ++x) {
        // ours moved back by the shift found so far, against Chromium's
        const s = sample(A, x + dx, y + dy), t = B[y * w + x];
        const gx = (sample(A, x + dx + 1, y + dy) - sample(A, x + dx - 1, y + dy) + B[y * w + x + 1] - B[y * w + x - 1]) / 4;
        const gy = (sample(A, x + dx, y + dy + 1) - sample(A, x + dx, y + dy - 1) + B[(y + 1) * w + x] - B[(y - 1) * w + x]) / 4;
        if (!gx && !gy && s === t) continue;
        sxx += gx * gx; sxy += gx * gy; syy += gy * gy;
        bx += gx * (s - t); by += gy * (s - t);
      }
    }
    const det = sxx * syy - sxy * sxy;
    if (!(det > 1e-12)) break;
    const ux = (syy * bx - sxy * by) / det, uy = (sxx * by - sxy * bx) / det;
    dx -= ux; dy -= uy;
    if (Math.abs(ux) < 1e-4 && Math.abs(uy) < 1e-4) break;
  }
  return { x: dx, y: dy };
}

// Share of pixels in the box with alpha off by more than 32, among those either paints.
function strictShare(a, b, [left, top, right, bottom]) {
  let painted = 0, off = 0;
  for (let y = top; y < bottom; ++y) {
    for (let x = left; x < right; ++x) {
      const i = (y * a.width + x) * 4 + 3;
      if (!a.data[i] && !b.data[i]) continue;
      ++painted;
      if (Math.abs(a.data[i] - b.data[i]) > 32) ++off;
    }
  }
  return painted ? off / painted : 0;
}

function measure(jobs, oursDir, chromiumDir, transform) {
  const results = [];
  for (const job of jobs) {
    const ours = decodePNG(fs.readFileSync(path.join(oursDir, `${job.name}.png`)));
    const theirs = decodePNG(fs.readFileSync(path.join(chromiumDir, `${job.name}.png`)));
    if (ours.width !== theirs.width || ours.height !== theirs.height) throw new Error(`${job.name}: sizes differ`);
    for (const cell of job.cells) {
      const a = centroid(ours, cell.box, transform), b = centroid(theirs, cell.box, transform);
      if (!a.sum || !b.sum) {
        results.push({ ...cell, dx: NaN, dy: NaN, cx: NaN, cy: NaN, ink: a.sum / (b.sum || 1), strict: 1 });
        continue;
      }
      const box = [Math.max(0, Math.min(a.box[0], b.box[0]) - 2), Math.max(0, Math.min(a.box[1], b.box[1]) - 2),
                   Math.min(ours.width, Math.max(a.box[2], b.box[2]) + 2), Math.min(ours.height, Math.max(a.box[3], b.box[3]) + 2)];
      const shift = register(ours, theirs, box);
      results.push({ ...cell, dx: shift.x, dy: shift.y, cx: a.x - b.x, cy: a.y - b.y, ink: a.sum / b.sum,
                     strict: strictShare(ours, theirs, box) });
    }
  }
  return results;
}

const fmt = (v) => (Number.isNaN(v) ? '  none' : (v >= 0 ? '+' : '') + v.toFixed(3));
const describe = (c) => `${c.weight} ${c.size}px ${c.baseline} ${c.align} "${c.text}" at +${c.fx},+${c.fy}`;

function worst(cells, key) {
  return cells.reduce((w, c) => (!w || Number.isNaN(c[key]) || Math.abs(c[key]) > Math.abs(w[key]) ? c : w), null);
}

function report(results, options) {
  if (options.details) {
    for (const c of results) {
      console.log(`${describe(c).padEnd(52)} dx ${fmt(c.dx)} dy ${fmt(c.dy)} centroid ${fmt(c.cx)} ${fmt(c.cy)} ink ${c.ink.toFixed(3)} strict ${(c.strict * 100).toFixed(1)}%`);
    }
    console.log('');
  }
  console.log('worst origin offset, ours minus Chromium, in pixels (x right, y down)');
  console.log(`${'baseline'.padEnd(12)}${'sizes'.padEnd(9)}${'|dx|'.padStart(8)}${'|dy|'.padStart(8)}  mean dy  where dy is worst`);
  for (const baseline of options.baselines) {
    for (const [low, high] of RANGES) {
      const cells = results.filter((c) => c.baseline === baseline && c.size >= low && c.size <= high);
      if (!cells.length) continue;
      const wx = worst(cells, 'dx'), wy = worst(cells, 'dy');
      const mean = cells.reduce((s, c) => s + c.dy, 0) / cells.length;
      console.log(`${baseline.padEnd(12)}${`${low}-${high}`.padEnd(9)}${Math.abs(wx.dx).toFixed(3).padStart(8)}` +
                  `${Math.abs(wy.dy).toFixed(3).padStart(8)}  ${fmt(mean).padStart(7)}  ${describe(wy)}`);
    }
  }
  const wx = worst(results, 'dx'), wy = worst(results, 'dy');
  console.log(`worst dx ${fmt(wx.dx)} (${describe(wx)}), worst dy ${fmt(wy.dy)} (${describe(wy)})`);
  const strict = results.filter((c) => c.strict <= 0.01).length / results.length;
  console.log(`cells with at most 1% of pixels off by more than 32: ${(strict * 100).toFixed(1)}% of ${results.length}`);
  return Math.max(Math.abs(wx.dx), Math.abs(wy.dy));
}

try {
  const options = parseArguments(process.argv.slice(2));
  const engine = findEngine(options.engine);
  const folder = options.keep ? path.resolve(options.keep) : fs.mkdtempSync(path.join(os.tmpdir(), 'ampwell-placement-'));
  const jobs = makeJobs(options);
  const scripts = path.join(folder, 'scripts'), oursDir = path.join(folder, 'ours'), chromiumDir = path.join(folder, 'chromium');
  fs.mkdirSync(scripts, { recursive: true });
  for (const job of jobs) fs.writeFileSync(path.join(scripts, `${job.name}.js`), job.code);
  execFileSync(engine, ['--out', oursDir, ...jobs.map((j) => path.join(scripts, `${j.name}.js`))],
               { stdio: ['ignore', 'ignore', 'inherit'] });
  const log = console.log;
  console.log = () => {};
  const failures = await renderJobs(jobs, { out: chromiumDir });
  console.log = log;
  if (failures) throw new Error(`Chromium could not render ${failures} scripts`);
  const worstOffset = report(measure(jobs, oursDir, chromiumDir, options.transform), options);
  if (!options.keep) fs.rmSync(folder, { recursive: true, force: true });
  else console.log(`scripts and pictures kept in ${folder}`);
  process.exitCode = options.limit !== null && !(worstOffset <= options.limit) ? 1 : 0;
} catch (error) {
  console.error(`text-placement.mjs: ${error.message}`);
  process.exitCode = 2;
}
