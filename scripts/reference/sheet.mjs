#!/usr/bin/env node
// Lays PNG files out on one page, enlarged without smoothing, over a grey checkerboard that
// shows transparency, each with its name: a quick way to look at many small renders at once.
//   node scripts/reference/sheet.mjs [--zoom 4] OUT.png IN.png...
import fs from 'node:fs';
import path from 'node:path';
import { launchChromium } from './render.mjs';

const args = process.argv.slice(2);
let zoom = 4;
if (args[0] === '--zoom') { zoom = Number(args[1]); args.splice(0, 2); }
const [out, ...inputs] = args;
if (!out || inputs.length === 0) {
  console.error('usage: sheet.mjs [--zoom N] OUT.png IN.png...');
  process.exit(2);
}
const escape = (text) => text.replace(/[&<>"]/g, (c) => `&#${c.charCodeAt(0)};`);
const cells = inputs.map((file) => {
  const data = fs.readFileSync(file).toString('base64');
  const width = fs.readFileSync(file).readUInt32BE(16);
  return `<figure><img src="data:image/png;base64,${data}" style="width:${width * zoom}px">` +
         `<figcaption>${escape(path.basename(file, '.png'))}</figcaption></figure>`;
});
const html = `<!DOCTYPE html><style>
body { margin: 8px; font: 12px sans-serif; display: flex; flex-wrap: wrap; gap: 8px; background: #fff; }
figure { margin: 0; }
img { image-rendering: pixelated; display: block;
      background: repeating-conic-gradient(#999 0 25%, #666 0 50%) 0 0 / 16px 16px; }
</style>${cells.join('')}`;
const browser = await launchChromium({ fonts: null });
try {
  const page = await browser.context.newPage();
  await page.setViewportSize({ width: 1200, height: 200 });
  await page.setContent(html);
  await page.screenshot({ path: out, fullPage: true });
} finally {
  await browser.close();
}
