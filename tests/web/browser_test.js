// Plays the example sessions of the demo in headless Chromium on the browser build in out/web and compares
// the frames their scripts picture with the native golden frames; fails on any console error or uncaught
// exception of the page. Usage: node browser_test.js OUT_WEB_DIR REPO_DIR
'use strict';
const fs = require('fs');
const http = require('http');
const os = require('os');
const path = require('path');
const puppeteer = require('puppeteer-core');
const {PNG} = require('pngjs');

// Font smoothing differs between the services' rasterisers: a channel may differ by this much ...
const CHANNEL_TOLERANCE = 32;
// ... and this share of a frame's pixels may differ by more (text edges).
const DIFFERING_SHARE = 0.006;

const [webDir, repo] = process.argv.slice(2).map((p) => path.resolve(p));
const types = {'.html': 'text/html', '.js': 'text/javascript', '.wasm': 'application/wasm'};

// Serves out/web on 127.0.0.1; `isolated` adds the headers that give the page shared memory (threads).
function serve(isolated) {
  const server = http.createServer((req, res) => {
    const file = path.join(webDir, decodeURIComponent(new URL(req.url, 'http://x').pathname));
    if (!file.startsWith(webDir) || !fs.existsSync(file) || fs.statSync(file).isDirectory()) {
      res.writeHead(404).end();
      return;
    }
    const headers = {'Content-Type': types[path.extname(file)] || 'application/octet-stream'};
    if (isolated) {
      headers['Cross-Origin-Opener-Policy'] = 'same-origin';
      headers['Cross-Origin-Embedder-Policy'] = 'require-corp';
    }
    res.writeHead(200, headers).end(fs.readFileSync(file));
  });
  return new Promise((resolve) => server.listen(0, '127.0.0.1', () => resolve(server)));
}

// Share of pixels whose colour differs by more than the tolerance in any channel.
function differingShare(a, b) {
  if (a.width !== b.width || a.height !== b.height) return 1;
  let differing = 0;
  for (let i = 0; i < a.data.length; i += 4)
    for (let c = 0; c < 3; ++c)
      if (Math.abs(a.data[i + c] - b.data[i + c]) > CHANNEL_TOLERANCE) {
        ++differing;
        break;
      }
  return differing / (a.width * a.height);
}

// Plays one example; returns the failures and the page's timings.
async function play(browser, base, name, expectBuild) {
  const failures = [];
  const page = await browser.newPage();
  await page.setViewport({width: 800, height: 600});
  page.on('console', (m) => m.type() === 'error' && failures.push(`console error: ${m.text()}`));
  page.on('pageerror', (e) => failures.push(`uncaught: ${e.message}`));
  await page.goto(`${base}/index.html?screen=${name}&hold=1&nav=0`);
  const goldenDir = path.join(repo, 'tests/golden', name);
  const golden = fs.readdirSync(goldenDir).filter((f) => f.endsWith('.png')).sort();
  const outDir = path.join(webDir, 'frames', `${name}-${expectBuild}`);
  fs.mkdirSync(outDir, {recursive: true});
  for (const file of golden) {
    const handle = await page.waitForFunction(() => window.gameui.held, {timeout: 30000}).catch(() => null);
    if (!handle || failures.length) {
      failures.push(`no frame ${file}`);
      break;
    }
    const frame = await handle.jsonValue();
    const url = await page.evaluate(() => document.getElementById('screen').toDataURL('image/png'));
    const shot = Buffer.from(url.split(',')[1], 'base64');
    fs.writeFileSync(path.join(outDir, `frame${String(frame).padStart(3, '0')}.png`), shot);
    const share = differingShare(PNG.sync.read(shot), PNG.sync.read(fs.readFileSync(path.join(goldenDir, file))));
    if (`frame${String(frame).padStart(3, '0')}.png` !== file) failures.push(`frame ${frame} pictured, ${file} expected`);
    else if (share > DIFFERING_SHARE) failures.push(`${file}: ${(share * 100).toFixed(2)} % of the pixels differ`);
    await page.evaluate(() => window.gameui.resume());
  }
  await page.waitForFunction(() => window.gameui.scriptDone || window.gameui.quit, {timeout: 30000})
      .catch(() => failures.push('the script did not end'));
  const state = await page.evaluate(() => window.gameui);
  if (state.build !== expectBuild) failures.push(`ran the ${state.build} build, not the ${expectBuild} one`);
  // Without threads a background loader says that it loads on the calling thread; with them, never.
  const loads = fs.readFileSync(path.join(repo, 'examples', `${name}.args`), 'utf8').includes('--load');
  const callingThread = state.log.some((l) => l.includes('files load on the calling thread'));
  if (loads && callingThread !== (expectBuild === 'calling-thread')) failures.push('wrong loader mode');
  await page.close();
  return {failures, firstFrameMs: state.firstFrameMs, frameMs: state.frameMs};
}

async function main() {
  const plain = await serve(false);
  const isolated = await serve(true);
  const profile = fs.mkdtempSync(path.join(os.tmpdir(), 'gameui-chromium-'));
  const browser = await puppeteer.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    userDataDir: profile,
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
           '--disable-background-networking', '--disable-component-update', '--disable-sync'],
  });
  const url = (server) => `http://127.0.0.1:${server.address().port}`;
  // Every example screen without threads; the background loading screen also with them.
  const runs = fs.readdirSync(path.join(repo, 'tests/golden'))
      .filter((d) => fs.existsSync(path.join(repo, 'examples', `${d}.args`)))
      .map((name) => [name, 'calling-thread', url(plain)]);
  runs.push(['loading', 'threads', url(isolated)]);
  let failed = 0;
  for (const [name, build, base] of runs) {
    const r = await play(browser, base, name, build);
    const timing = `first frame ${Math.round(r.firstFrameMs)} ms, ${r.frameMs.toFixed(2)} ms a frame`;
    console.log(`${r.failures.length ? 'FAIL' : 'ok  '} ${name} (${build}): ${timing}`);
    r.failures.forEach((f) => console.log(`     ${f}`));
    failed += r.failures.length ? 1 : 0;
  }
  await browser.close();
  plain.close();
  isolated.close();
  fs.rmSync(profile, {recursive: true, force: true});
  console.log(`browser: ${runs.length - failed} passed, ${failed} failed`);
  process.exitCode = failed ? 1 : 0;
}

main().catch((e) => {
  console.error(e);
  process.exit(1); // the browser and the servers would keep Node running
});
