// Times gameui's frame and input benchmarks natively and in headless Chromium: the same harness
// (timing_gameui.cpp) built by the native compiler and by Emscripten, run in ROUNDS interleaved rounds
// (native, then Chromium) so that both see the same state of a shared machine. Writes the fastest of the
// rounds side by side to OUT_DIR/results.json and OUT_DIR/results.md, and prints the table: on a loaded
// machine the least disturbed run is the one closest to the cost of the work.
// Usage: node run_chromium.js NATIVE_PROGRAM WEB_DIR OUT_DIR [ROUNDS] [SECONDS]
'use strict';
const {execFileSync} = require('child_process');
const fs = require('fs');
const http = require('http');
const os = require('os');
const path = require('path');
const puppeteer = require('puppeteer-core');

const [native, webDir, outDir] = process.argv.slice(2, 5).map((p) => path.resolve(p));
const rounds = Number(process.argv[5] || 3);
const seconds = process.argv[6] || '0.1';
const page = `<!doctype html><link rel="icon" href="data:,"><script>var Module = {arguments: ['/tmp', '${seconds}']};</script>
<script src="timing_gameui.js"></script>`;
const types = {'.js': 'text/javascript', '.wasm': 'application/wasm'};

// Serves the page and WEB_DIR's files cross-origin isolated, which gives the page a 5 µs clock.
function serve() {
  const server = http.createServer((req, res) => {
    const name = path.basename(new URL(req.url, 'http://x').pathname);
    const file = path.join(webDir, name);
    const headers = {'Cross-Origin-Opener-Policy': 'same-origin', 'Cross-Origin-Embedder-Policy': 'require-corp'};
    if (!name) res.writeHead(200, {...headers, 'Content-Type': 'text/html'}).end(page);
    else if (!types[path.extname(name)] || !fs.existsSync(file)) res.writeHead(404).end();
    else res.writeHead(200, {...headers, 'Content-Type': types[path.extname(name)]}).end(fs.readFileSync(file));
  });
  return new Promise((resolve) => server.listen(0, '127.0.0.1', () => resolve(server)));
}

// The harness's output lines as objects; throws on an error line or a missing end.
function parse(lines, where) {
  const records = lines.filter((l) => l.startsWith('{')).map((l) => JSON.parse(l));
  const error = records.find((r) => r.error);
  if (error || !records.some((r) => r.done)) throw new Error(`${where}: ${error ? error.error : 'no end'}`);
  return records;
}

function runNative() {
  const data = path.join(outDir, 'data');
  fs.mkdirSync(data, {recursive: true});
  return parse(execFileSync(native, [data, seconds], {encoding: 'utf8'}).split('\n'), 'native');
}

async function runChromium(browser, url) {
  const tab = await browser.newPage();
  const lines = [];
  const ended = new Promise((resolve, reject) => {
    tab.on('console', (m) => {
      lines.push(m.text());
      if (m.text().includes('"done"')) resolve();
      else if (m.type() !== 'log') reject(new Error(`Chromium: ${m.text()}`));
    });
    tab.on('pageerror', (e) => reject(new Error(`Chromium: ${e.message}`)));
  });
  await tab.goto(url, {waitUntil: 'domcontentloaded'});
  await ended;
  await tab.close();
  return parse(lines, 'Chromium');
}

const fmt = (v) => (v < 100 ? v.toPrecision(3) : Math.round(v).toLocaleString('en-US'));

async function main() {
  const server = await serve();
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'gameui-chromium-'));
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    userDataDir: profile,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking',
           '--disable-component-update', '--disable-sync'],
  });
  const url = `http://127.0.0.1:${server.address().port}/`;
  const samples = {}; // name -> {units, native: [ns per unit], chromium: [...]}
  const compilers = {};
  const version = await browser.version();
  try {
    for (let r = 1; r <= rounds; ++r)
      for (const [side, run] of [['native', runNative], ['chromium', () => runChromium(browser, url)]]) {
        console.log(`round ${r}/${rounds}: ${side}`);
        for (const rec of await run()) {
          if (rec.compiler) compilers[side] = rec.compiler;
          if (!rec.name) continue;
          const s = (samples[rec.name] ||= {units: rec.units, native: [], chromium: []});
          s[side].push(rec.ns_per_step / rec.units);
        }
      }
  } finally {
    await browser.close();
    server.close();
    fs.rmSync(profile, {recursive: true, force: true});
  }
  const machine = {cpu: os.cpus()[0].model, cores: os.cpus().length, loadAverage: os.loadavg()[0],
                   date: new Date().toISOString().slice(0, 16).replace('T', ' ') + ' UTC',
                   browser: version, compilers, rounds};
  const rows = Object.entries(samples).map(([name, s]) => {
    const [operation, ...scene] = name.split('/');
    const native = Math.min(...s.native), chromium = Math.min(...s.chromium);
    return {operation, scene: scene.join('/'), unit: operation.startsWith('frame') ? 'ns/widget' : 'ns/event',
            native, chromium, ratio: chromium / native, samples: s};
  });
  fs.writeFileSync(path.join(outDir, 'results.json'), JSON.stringify({machine, rows}, null, 1));
  const md = [`Wall time, fastest batch of ${rounds} interleaved rounds. ${machine.cpu}, ` +
              `${machine.cores} cores; load average at the end ${machine.loadAverage.toFixed(2)}; ${machine.date}. ` +
              `Native: ${compilers.native}; browser: ${version}, ${compilers.chromium}.`, '',
              '| operation | scene | unit | native | Chromium | Chromium/native |', '|---|---|---|---:|---:|---:|',
              ...rows.map((r) => `| ${r.operation} | ${r.scene} | ${r.unit} | ${fmt(r.native)} | ` +
                                 `${fmt(r.chromium)} | ${r.ratio.toFixed(2)} |`)];
  fs.writeFileSync(path.join(outDir, 'results.md'), md.join('\n') + '\n');
  console.log(md.join('\n'));
}

main().catch((e) => {
  console.error(e.message);
  process.exitCode = 1;
});
