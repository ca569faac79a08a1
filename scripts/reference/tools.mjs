// npm packages the reference, conformance and peer scripts need, installed on first use at
// pinned versions into a folder outside the work tree, so that node_modules never lands in git.
//   AMPWELL_TOOLS_DIR  where they go (default: $XDG_CACHE_HOME/ampwell/npm)
import { createRequire } from 'node:module';
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';

export const PINNED = {
  'playwright-core': '1.65.1',
  '@napi-rs/canvas': '1.1.1',
  'canvas': '3.2.3',
};

export function toolsDir() {
  if (process.env.AMPWELL_TOOLS_DIR) return path.resolve(process.env.AMPWELL_TOOLS_DIR);
  const cache = process.env.XDG_CACHE_HOME || path.join(os.homedir(), '.cache');
  return path.join(cache, 'ampwell', 'npm');
}

function installedVersion(dir, name) {
  try {
    const manifest = path.join(dir, 'node_modules', ...name.split('/'), 'package.json');
    return JSON.parse(fs.readFileSync(manifest, 'utf8')).version;
  } catch {
    return null;
  }
}

// Returns the package's CommonJS export, installing the pinned version when it is missing.
export function requireTool(name) {
  const version = PINNED[name];
  if (!version) throw new Error(`no pinned version for ${name}`);
  const dir = toolsDir();
  if (installedVersion(dir, name) !== version) {
    fs.mkdirSync(dir, { recursive: true });
    if (!fs.existsSync(path.join(dir, 'package.json'))) {
      fs.writeFileSync(path.join(dir, 'package.json'), '{ "private": true }\n');
    }
    process.stderr.write(`installing ${name}@${version} into ${dir}\n`);
    execFileSync('npm', ['install', '--prefix', dir, '--save-exact', '--no-audit', '--no-fund', `${name}@${version}`],
                 { stdio: ['ignore', 'ignore', 'inherit'] });
  }
  return createRequire(path.join(dir, 'package.json'))(name);
}
