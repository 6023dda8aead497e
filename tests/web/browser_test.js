// Plays the example sessions of the demo and the game's in headless Chromium on the browser build in out/web
// and compares the frames their scripts picture with the native golden frames, then plays the game live
// through the page's input; fails on any console error or uncaught exception of the page.
// Usage: node browser_test.js OUT_WEB_DIR REPO_DIR
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
const argsFile = (name) => path.join(repo, 'examples', name === 'game' ? 'game/demo.args' : `${name}.args`);

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

// A page of the given size whose console errors and uncaught exceptions are failures.
async function open(browser, failures, width, height) {
  const page = await browser.newPage();
  await page.setViewport({width, height, hasTouch: true});
  page.on('console', (m) => m.type() === 'error' && failures.push(`console error: ${m.text()}`));
  page.on('pageerror', (e) => failures.push(`uncaught: ${e.message}`));
  return page;
}

// Plays one example, or the game's demo session; returns the failures and the page's timings.
async function play(browser, base, name, expectBuild) {
  const failures = [];
  const page = await open(browser, failures, 800, 600);
  await page.goto(`${base}/index.html?screen=${name}&demo=1&hold=1&nav=0`);
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
    const shotName = file.replace(/\d+/, (digits) => String(frame).padStart(digits.length, '0'));
    fs.writeFileSync(path.join(outDir, shotName), shot);
    const share = differingShare(PNG.sync.read(shot), PNG.sync.read(fs.readFileSync(path.join(goldenDir, file))));
    if (shotName !== file) failures.push(`frame ${frame} pictured, ${file} expected`);
    else if (share > DIFFERING_SHARE) failures.push(`${file}: ${(share * 100).toFixed(2)} % of the pixels differ`);
    await page.evaluate(() => window.gameui.resume());
  }
  await page.waitForFunction(() => window.gameui.scriptDone || window.gameui.quit, {timeout: 30000})
      .catch(() => failures.push('the script did not end'));
  const state = await page.evaluate(() => window.gameui);
  if (state.build !== expectBuild) failures.push(`ran the ${state.build} build, not the ${expectBuild} one`);
  // Without threads a background loader says that it loads on the calling thread; with them, never.
  const loads = name === 'game' || fs.readFileSync(argsFile(name), 'utf8').includes('--load');
  const callingThread = state.log.some((l) => l.includes('files load on the calling thread'));
  if (loads && callingThread !== (expectBuild === 'calling-thread')) failures.push('wrong loader mode');
  await page.close();
  return {failures, firstFrameMs: state.firstFrameMs, frameMs: state.frameMs};
}

// The game played live in a page wider than the canvas's aspect: a key, a mouse click and a touch tap
// on the scaled buttons and a gamepad each show the screen they lead to, and the clicks sound.
async function playLive(browser, base) {
  const failures = [];
  const page = await open(browser, failures, 1200, 700);
  await page.evaluateOnNewDocument(() => {
    window.pad = {axes: [0, 0], buttons: Array.from({length: 16}, () => ({pressed: false}))};
    navigator.getGamepads = () => [window.pad];
    window.sounds = 0; // effects started; the music loops
    const start = AudioBufferSourceNode.prototype.start;
    AudioBufferSourceNode.prototype.start = function (...args) {
      window.sounds += this.loop ? 0 : 1;
      return start.apply(this, args);
    };
  });
  await page.goto(`${base}/index.html?screen=game&nav=0`);
  // At least `count` of the page's frames and `ms` of its time.
  const frames = (count, ms) => page.evaluate((n, least) => new Promise((resolve) => {
    const start = performance.now();
    const tick = () => (--n <= 0 && performance.now() - start >= least ? resolve() : requestAnimationFrame(tick));
    requestAnimationFrame(tick);
  }), count, ms);
  const shows = async (screen, input) => {
    await page.waitForFunction((s) => window.gameui.screen === s, {timeout: 10000}, screen)
        .catch(() => failures.push(`${input} did not lead to the ${screen} screen`));
    await frames(20, 1000); // the buttons slide in for a second of the game's clock (at most 100 ms a frame)
  };
  // Where a point of the 800 x 600 screen is on the page: the canvas is scaled to fit and centred.
  const scale = Math.min(1200 / 800, 700 / 600);
  const at = (x, y) =>
    [(1200 - Math.floor(800 * scale)) / 2 + x * scale, (700 - Math.floor(600 * scale)) / 2 + y * scale];
  const press = async (button) => { // on the gamepad, held for a few frames
    for (const pressed of [true, false]) {
      await page.evaluate((b, p) => { window.pad.buttons[b].pressed = p; }, button, pressed);
      await frames(3, 0); // the page polls the gamepad once a frame
    }
  };
  await shows('title', 'the page');
  await page.keyboard.press('Enter');
  await shows('menu', 'a key');
  await page.mouse.click(...at(500, 210)); // play (240 x 48 from 280, 170): near its corner, a point
  // mapped without the scale or the offset misses it
  await page.mouse.move(5, 5); // off the canvas, so that only the tap below can click
  await shows('levels', 'a mouse click');
  await press(1); // B: back
  await shows('menu', 'the gamepad');
  await page.touchscreen.tap(...at(510, 214));
  await shows('levels', 'a touch tap');
  const sounds = await page.evaluate(() => window.sounds);
  if (sounds < 3) failures.push(`${sounds} sounds played, at least one for each of three clicks expected`);
  await page.close();
  return failures;
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
      .filter((d) => fs.existsSync(argsFile(d)))
      .map((name) => [name, 'calling-thread', url(plain)]);
  runs.push(['loading', 'threads', url(isolated)], ['game', 'threads', url(isolated)]);
  let failed = 0;
  for (const [name, build, base] of runs) {
    const r = await play(browser, base, name, build);
    const timing = `first frame ${Math.round(r.firstFrameMs)} ms, ${r.frameMs.toFixed(2)} ms a frame`;
    console.log(`${r.failures.length ? 'FAIL' : 'ok  '} ${name} (${build}): ${timing}`);
    r.failures.forEach((f) => console.log(`     ${f}`));
    failed += r.failures.length ? 1 : 0;
  }
  const live = await playLive(browser, url(plain));
  console.log(`${live.length ? 'FAIL' : 'ok  '} game played live: key, mouse, touch, gamepad and sound`);
  live.forEach((f) => console.log(`     ${f}`));
  failed += live.length ? 1 : 0;
  await browser.close();
  plain.close();
  isolated.close();
  fs.rmSync(profile, {recursive: true, force: true});
  console.log(`browser: ${runs.length + 1 - failed} passed, ${failed} failed`);
  process.exitCode = failed ? 1 : 0;
}

main().catch((e) => {
  console.error(e);
  process.exit(1); // the browser and the servers would keep Node running
});
