// The page side of gameui's browser services: pictures on the canvas 2D context, sounds on Web Audio, and
// the page's pointer, keyboard and gamepad events handed to the library as its input events.
mergeInto(LibraryManager.library, {
  $gameuiPage__postset: 'gameuiPage.init();',
  $gameuiPage: {
    images: [null],
    sounds: {},
    voices: [],
    audio: null,
    pads: {},
    init: function () {
      if (typeof document === 'undefined' || !Module.canvas) return; // a worker, or no page
      var canvas = Module.canvas;
      gameuiPage.context = canvas.getContext('2d');
      gameuiPage.context.imageSmoothingEnabled = false; // scaled sprites keep hard edges, as on SDL
      // The canvas may be shown larger or smaller than its pixels: positions come back in canvas pixels.
      var at = function (e) {
        var r = canvas.getBoundingClientRect();
        return [Math.floor((e.clientX - r.left) * canvas.width / r.width),
                Math.floor((e.clientY - r.top) * canvas.height / r.height)];
      };
      var send = function (type, p, key) { Module._gameui_web_input(type, p[0], p[1], key); };
      // Pointer events cover the mouse, pens and touch alike; only the primary pointer steers.
      canvas.addEventListener('pointermove', function (e) { if (e.isPrimary) send(0, at(e), 0); });
      canvas.addEventListener('pointerdown', function (e) {
        if (!e.isPrimary || e.button !== 0) return;
        gameuiPage.resumeAudio();
        canvas.setPointerCapture(e.pointerId);
        send(1, at(e), 0);
        e.preventDefault();
      });
      canvas.addEventListener('pointerup', function (e) {
        if (e.isPrimary && e.button === 0) send(2, at(e), 0);
      });
      canvas.addEventListener('touchstart', function (e) { e.preventDefault(); }, {passive: false});
      var keyDown = function (e, down) {
        var key = gameuiPage.libraryKey(e);
        if (key) send(down ? 3 : 4, [-1, -1], key);
        if (down && e.key.length === 1 && !e.ctrlKey && !e.metaKey) send(5, [-1, -1], e.key.codePointAt(0));
        if (key === 9 || key === 127) e.preventDefault(); // tab and backspace stay in the game
      };
      window.addEventListener('keydown', function (e) { gameuiPage.resumeAudio(); keyDown(e, true); });
      window.addEventListener('keyup', function (e) { keyDown(e, false); });
    },
    // The library's key codes, as the SDL services give them; the arrows have codes of their own
    // (webinput.h).
    libraryKey: function (e) {
      var named = {Enter: 13, Escape: 27, Backspace: 127, Tab: 9, Alt: 136, Control: 137, Shift: 138,
                   ArrowLeft: 0x101, ArrowRight: 0x102, ArrowUp: 0x103, ArrowDown: 0x104};
      if (named[e.key]) return named[e.key];
      var f = /^F([0-9]+)$/.exec(e.key);
      if (f && f[1] >= 1 && f[1] <= 10) return 162 + Number(f[1]);
      if (e.key.length === 1 && e.key.charCodeAt(0) > 0 && e.key.charCodeAt(0) < 127)
        return e.key.toLowerCase().charCodeAt(0);
      return 0;
    },
    resumeAudio: function () {
      if (gameuiPage.audio && gameuiPage.audio.state === 'suspended') gameuiPage.audio.resume();
    },
    voice: function (i) {
      var a = gameuiPage.audio;
      if (!gameuiPage.voices[i]) {
        // Each side has a gain of its own: the louder side stays at full volume, as SDL_mixer pans.
        var v = {split: a.createChannelSplitter(2), merge: a.createChannelMerger(2),
                 left: a.createGain(), right: a.createGain(), source: null, rate: 1};
        v.split.connect(v.left, 0);
        v.split.connect(v.right, 1);
        v.left.connect(v.merge, 0, 0);
        v.right.connect(v.merge, 0, 1);
        v.merge.connect(gameuiPage.gain(0));
        gameuiPage.voices[i] = v;
      }
      return gameuiPage.voices[i];
    },
    // The volume of the sounds (0) and of the music (1).
    gains: [],
    gain: function (i) {
      if (!gameuiPage.gains[i]) {
        gameuiPage.gains[i] = gameuiPage.audio.createGain();
        gameuiPage.gains[i].connect(gameuiPage.audio.destination);
      }
      return gameuiPage.gains[i];
    },
    // Starts a decoded sound, or once it is decoded.
    whenDecoded: function (sound, start) {
      if (sound.buffer) start(); else sound.waiting.push(start);
    },
  },

  gameui_page_image__deps: ['$gameuiPage'],
  gameui_page_image__proxy: 'sync',
  gameui_page_image: function (rgba, width, height) {
    var canvas = document.createElement('canvas');
    canvas.width = width;
    canvas.height = height;
    var pixels = new ImageData(width, height);
    pixels.data.set(HEAPU8.subarray(rgba, rgba + width * height * 4)); // a copy: the heap may be shared
    canvas.getContext('2d').putImageData(pixels, 0, 0);
    gameuiPage.images.push(canvas);
    return gameuiPage.images.length - 1;
  },
  gameui_page_free__deps: ['$gameuiPage'],
  gameui_page_free__proxy: 'sync',
  gameui_page_free: function (image) { gameuiPage.images[image] = null; },

  gameui_page_clear__deps: ['$gameuiPage'],
  gameui_page_clear: function (r, g, b) {
    var c = gameuiPage.context;
    c.globalAlpha = 1;
    c.fillStyle = 'rgb(' + r + ',' + g + ',' + b + ')';
    c.fillRect(0, 0, c.canvas.width, c.canvas.height);
  },
  gameui_page_draw__deps: ['$gameuiPage'],
  gameui_page_draw: function (image, sx, sy, sw, sh, dx, dy, dw, dh, alpha) {
    var c = gameuiPage.context;
    c.globalAlpha = alpha / 255;
    c.drawImage(gameuiPage.images[image], sx, sy, sw, sh, dx, dy, dw, dh);
  },

  gameui_page_audio__deps: ['$gameuiPage'],
  gameui_page_audio__proxy: 'sync',
  gameui_page_audio: function () {
    if (!gameuiPage.audio && typeof AudioContext !== 'undefined') gameuiPage.audio = new AudioContext();
    return gameuiPage.audio ? 1 : 0;
  },
  gameui_page_sound_load__deps: ['$gameuiPage'],
  gameui_page_sound_load__proxy: 'sync',
  gameui_page_sound_load: function (name, bytes, size) {
    var key = UTF8ToString(name);
    var sound = gameuiPage.sounds[key] = {buffer: null, waiting: []};
    var copy = HEAPU8.slice(bytes, bytes + size).buffer;
    gameuiPage.audio.decodeAudioData(copy).then(function (buffer) {
      sound.buffer = buffer;
      sound.waiting.forEach(function (start) { start(); });
      sound.waiting = [];
    }, function () { console.warn('gameui: cannot decode sound ' + key); });
  },
  gameui_page_sound_play__deps: ['$gameuiPage'],
  gameui_page_sound_play__proxy: 'sync',
  gameui_page_sound_play: function (name, voice) {
    var sound = gameuiPage.sounds[UTF8ToString(name)];
    var v = gameuiPage.voice(voice);
    if (v.source) v.source.stop();
    v.source = null;
    v.left.gain.value = v.right.gain.value = 1;
    v.rate = 1;
    var start = function () {
      var s = gameuiPage.audio.createBufferSource();
      s.buffer = sound.buffer;
      s.playbackRate.value = v.rate;
      s.connect(v.split);
      s.start();
      v.source = s;
    };
    gameuiPage.whenDecoded(sound, start);
  },
  gameui_page_sound_volume__deps: ['$gameuiPage'],
  gameui_page_sound_volume__proxy: 'sync',
  gameui_page_sound_volume: function (sounds, music) {
    gameuiPage.gain(0).gain.value = sounds;
    gameuiPage.gain(1).gain.value = music;
  },
  gameui_page_music__deps: ['$gameuiPage'],
  gameui_page_music__proxy: 'sync',
  gameui_page_music: function (name) {
    var sound = gameuiPage.sounds[UTF8ToString(name)];
    if (gameuiPage.music) gameuiPage.music.stop();
    gameuiPage.whenDecoded(sound, function () {
      var s = gameuiPage.music = gameuiPage.audio.createBufferSource();
      s.buffer = sound.buffer;
      s.loop = true;
      s.connect(gameuiPage.gain(1));
      s.start();
    });
  },
  gameui_page_sound_pan__deps: ['$gameuiPage'],
  gameui_page_sound_pan__proxy: 'sync',
  gameui_page_sound_pan: function (voice, left, right) {
    var v = gameuiPage.voice(voice);
    v.left.gain.value = left;
    v.right.gain.value = right;
  },
  gameui_page_sound_rate__deps: ['$gameuiPage'],
  gameui_page_sound_rate__proxy: 'sync',
  gameui_page_sound_rate: function (voice, rate) {
    var v = gameuiPage.voice(voice);
    v.rate = rate;
    if (v.source) v.source.playbackRate.value = rate;
  },

  // Gamepads: the d-pad or left stick down moves between tab entries, A confirms, B backs out; left,
  // right and up are the arrows.
  gameui_page_poll__deps: ['$gameuiPage'],
  gameui_page_poll: function () {
    if (!navigator.getGamepads) return;
    var pads = navigator.getGamepads();
    for (var i = 0; i < pads.length; ++i) {
      var p = pads[i];
      if (!p) continue;
      var was = gameuiPage.pads[i] || {};
      var now = {};
      var x = p.axes.length > 1 ? p.axes[0] : 0, y = p.axes.length > 1 ? p.axes[1] : 0;
      var held = function (b) { return !!(p.buttons[b] && p.buttons[b].pressed); };
      now[13] = held(0);
      now[27] = held(1);
      now[9] = held(13) || y > 0.5;
      now[0x101] = held(14) || x < -0.5;
      now[0x102] = held(15) || x > 0.5;
      now[0x103] = held(12) || y < -0.5;
      for (var key in now)
        if (!!now[key] !== !!was[key]) Module._gameui_web_input(now[key] ? 3 : 4, -1, -1, Number(key));
      gameuiPage.pads[i] = now;
    }
  },
});
