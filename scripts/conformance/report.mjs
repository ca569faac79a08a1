// Counting and printing conformance results, shared by the Node runner and the tools that
// compare runs. The C++ runner prints the same layout.
import fs from 'node:fs';
import path from 'node:path';

// Test files of the suite, relative to its root, sorted; FILTER keeps those containing it.
export function collectFiles(root, filter = null) {
  if (!fs.existsSync(root)) return [];
  const found = [];
  const walk = (dir) => {
    for (const entry of fs.readdirSync(dir, { withFileTypes: true })) {
      const full = path.join(dir, entry.name);
      if (entry.isDirectory()) walk(full);
      else if (entry.name.endsWith('.html') && !/-(ref|expected)\.html$/.test(entry.name)) {
        found.push(path.relative(root, full).split(path.sep).join('/'));
      }
    }
  };
  walk(root);
  return found.filter((f) => !filter || f.includes(filter)).sort();
}

// "PASS\tname" / "FAIL\tname\tmessage" / "SKIP\treason" lines from the harness.
export function parseResults(text) {
  return String(text ?? '').split('\n').filter(Boolean).map((line) => {
    const [status, name = '', ...rest] = line.split('\t');
    return { status, name, message: rest.join(' ') };
  });
}

const area = (file) => (file.includes('/') ? file.slice(0, file.indexOf('/')) : '(top)');

export class Tally {
  constructor(engine) {
    this.engine = engine;
    this.areas = new Map();
    this.failures = [];
    this.skippedFiles = new Map();
    this.skippedTests = new Map();
  }

  add(file, results) {
    const a = this.areas.get(area(file)) ?? { pass: 0, fail: 0 };
    this.areas.set(area(file), a);
    if (results.length === 0) results = [{ status: 'FAIL', name: '(no result)', message: 'the harness reported nothing' }];
    for (const r of results) {
      if (r.status === 'PASS') a.pass++;
      else if (r.status === 'FAIL') { a.fail++; this.failures.push({ file, ...r }); }
      else if (r.status === 'SKIP' && results.length === 1 && !r.message) {
        this.skippedFiles.set(r.name, (this.skippedFiles.get(r.name) ?? 0) + 1);
      } else {
        this.skippedTests.set(r.message, (this.skippedTests.get(r.message) ?? 0) + 1);
      }
    }
  }

  totals() {
    let pass = 0, fail = 0;
    for (const a of this.areas.values()) { pass += a.pass; fail += a.fail; }
    return { pass, fail };
  }

  passRate() {
    const { pass, fail } = this.totals();
    return pass + fail ? (100 * pass) / (pass + fail) : 0;
  }

  print(out) {
    const { pass, fail } = this.totals();
    out.write(`canvas conformance: ${this.engine}\n`);
    out.write(`  ${'area'.padEnd(34)} ${'pass'.padStart(6)} ${'fail'.padStart(6)} ${'rate'.padStart(7)}\n`);
    for (const [name, a] of [...this.areas].sort()) {
      if (a.pass + a.fail === 0) continue;
      out.write(`  ${name.padEnd(34)} ${String(a.pass).padStart(6)} ${String(a.fail).padStart(6)} ` +
                `${((100 * a.pass) / (a.pass + a.fail)).toFixed(1).padStart(6)}%\n`);
    }
    const skippedFiles = [...this.skippedFiles.values()].reduce((s, n) => s + n, 0);
    out.write(`skipped ${skippedFiles} files: ${[...this.skippedFiles].sort((x, y) => y[1] - x[1]).map(([r, n]) => `${n} ${r}`).join(', ') || 'none'}\n`);
    if (this.skippedTests.size) {
      out.write(`skipped tests inside counted files: ${[...this.skippedTests].map(([r, n]) => `${n} ${r}`).join(', ')}\n`);
    }
    out.write(`conformance: ${pass} of ${pass + fail} synchronous tests pass (${this.passRate().toFixed(1)}%)\n`);
  }

  failureList() {
    let text = `# failures of ${this.engine}\n`;
    let current = null;
    for (const f of this.failures) {
      if (area(f.file) !== current) { current = area(f.file); text += `\n## ${current}\n`; }
      text += `- ${f.file.slice(current.length + 1)}: ${f.name}: ${f.message}\n`;
    }
    return text;
  }
}
