#!/usr/bin/env python3
"""Writes the game's pictures, sounds and music into examples/game/art (standard library only).

Run from anywhere: python3 examples/game/make_art.py. The files are committed; run it again after
changing a picture here, then regenerate the game's golden frames (make golden)."""
import math
import os
import random
import struct
import sys
import wave

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
import make_assets as kit  # noqa: E402  the examples' PNG and WAV writers

kit.OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "art")


def star(size, fill, edge, points=5):
    """A five-pointed star filling a size x size frame, with a darker rim."""
    c, outer, inner = (size - 1) / 2, size / 2 - 1, size / 4.6
    def radius_at(angle):
        sector = (angle / (2 * math.pi) * points * 2) % 2
        t = sector if sector < 1 else 2 - sector
        return outer + (inner - outer) * t
    def paint(x, y):
        dx, dy = x - c, y - c
        r, a = math.hypot(dx, dy), (math.atan2(dx, -dy)) % (2 * math.pi)
        lim = radius_at(a)
        if r > lim:
            return (0, 0, 0, 0)
        return edge if r > lim - 2 else fill
    return paint


def sky(x, y):
    """Night sky over dark hills, with fixed specks of stars."""
    hill = 520 + 30 * math.sin(x / 90) + 14 * math.sin(x / 37 + 1)
    if y > hill:
        return (12, 30 + (y - 500) // 8, 28, 255)
    rnd = random.Random(x * 7919 + y * 104729)
    if rnd.random() < 0.0025:
        v = rnd.randint(150, 255)
        return (v, v, min(255, v + 30), 255)
    return (8 + y // 24, 10 + y // 18, 40 + y // 9, 255)


def basket(w, h):
    def paint(x, y):
        inset = int(12 * y / h)
        if x < inset or x >= w - inset:
            return (0, 0, 0, 0)
        if y < 6:
            return (250, 210, 120, 255)
        weave = ((x // 8) + (y // 8)) % 2
        return (170, 100, 40, 255) if weave else (140, 80, 30, 255)
    return paint


def rock(size):
    c = (size - 1) / 2
    def paint(x, y):
        r = math.hypot(x - c, y - c)
        bump = size / 2 - 2 - 2 * math.sin(5 * math.atan2(y - c, x - c))
        if r > bump:
            return (0, 0, 0, 0)
        shade = int(110 - 40 * (x + y) / (2 * size))
        return (shade + 40, shade, shade - 20, 255) if r < bump - 2 else (60, 40, 30, 255)
    return paint


def level_tile(fill, border):
    """A 96 x 96 level tile; the locked look adds a padlock."""
    base = kit.box(96, 96, fill, border, 14)
    return base


def locked(x, y):
    base = kit.box(96, 96, (50, 50, 60, 255), (100, 100, 110, 255), 14)(x, y)
    if 36 <= x < 60 and 46 <= y < 70:
        return (180, 170, 120, 255)
    if 38 <= x < 58 and 28 <= y < 48 and not (42 <= x < 54 and 32 <= y):
        return (180, 170, 120, 255)
    return base


def rating(count):
    """Three small stars side by side, `count` of them lit."""
    lit, dim = star(24, (255, 215, 60, 255), (200, 120, 20, 255)), star(24, (70, 70, 90, 255), (40, 40, 50, 255))
    def paint(x, y):
        i = x // 24
        return (lit if i < count else dim)(x % 24, y)
    return paint


def write_music(name, seconds):
    """A soft looping arpeggio, 8-bit mono at 11025 Hz."""
    rate = 11025
    notes = [220.0, 277.2, 329.6, 440.0, 329.6, 277.2, 246.9, 293.7, 370.0, 493.9, 370.0, 293.7]
    step = seconds / len(notes)
    samples = bytearray()
    for i in range(int(rate * seconds)):
        t = i / rate
        n = notes[int(t / step) % len(notes)]
        local = (t % step) / step
        v = 0.3 * math.sin(2 * math.pi * n * t) * (1 - local) + 0.12 * math.sin(math.pi * n * t)
        samples.append(int(128 + 100 * v))
    with wave.open(os.path.join(kit.OUT, name), "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(1)
        w.setframerate(rate)
        w.writeframes(bytes(samples))


def main():
    os.makedirs(kit.OUT, exist_ok=True)
    kit.write_png("sky.png", 800, 600, sky)
    blue = (40, 60, 130, 255), (130, 170, 255, 255)
    # Buttons: idle, hover, pressed, disabled (as idle: dialogs slide with their buttons disabled).
    kit.sheet("button.png", 240, 48, [[kit.box(240, 48, *blue, 12)],
                                      [kit.box(240, 48, (70, 110, 210, 255), (230, 240, 255, 255), 12)],
                                      [kit.box(240, 48, (25, 40, 90, 255), (255, 215, 80, 255), 12)],
                                      [kit.box(240, 48, *blue, 12)]])
    kit.sheet("round.png", 48, 48, [[kit.box(48, 48, c, (230, 230, 240, 255), 22)] for c in
                                    [(150, 60, 60, 255), (200, 90, 90, 255), (110, 40, 40, 255), (150, 60, 60, 255)]])
    kit.write_png("panel.png", 560, 420, kit.box(560, 420, (16, 20, 44, 255), (120, 150, 230, 255), 18))
    kit.write_png("panel_small.png", 360, 320, kit.box(360, 320, (16, 20, 44, 255), (120, 150, 230, 255), 18))
    kit.write_png("track.png", 220, 8, kit.box(220, 8, (60, 60, 90, 255), (150, 150, 190, 255), 3))
    kit.write_png("thumb.png", 20, 32, kit.box(20, 32, (240, 200, 70, 255), (255, 255, 255, 255), 5))
    kit.sheet("toggle_off.png", 64, 32, [[kit.box(64, 32, (80, 80, 90, 255), (200, 200, 210, 255), 15)]] * 4)
    kit.sheet("toggle_on.png", 64, 32, [[kit.box(64, 32, (40, 170, 80, 255), (210, 255, 210, 255), 15)]] * 4)
    kit.sheet("radio.png", 32, 32, [[kit.box(32, 32, c, (220, 220, 230, 255), 15)] for c in
                                    [(60, 70, 120, 255), (100, 120, 200, 255), (250, 205, 60, 255), (60, 70, 120, 255)]])
    kit.write_png("bar.png", 300, 18, lambda x, y: (60 + x // 3, 210 - x // 3, 90 + x // 4, 255))
    kit.write_png("barframe.png", 312, 30, kit.box(312, 30, (10, 12, 30, 255), (150, 160, 200, 255), 8))
    kit.write_png("field.png", 300, 44, kit.box(300, 44, (8, 10, 26, 255), (110, 140, 220, 255), 8))
    kit.sheet("cursor.png", 12, 28, [[lambda x, y: (255, 215, 80, 255) if 2 <= x < 10 and y >= 22 else (0, 0, 0, 0),
                                      lambda x, y: (0, 0, 0, 0)]])
    kit.write_png("star.png", 32, 32, star(32, (255, 220, 70, 255), (210, 130, 20, 255)))
    kit.write_png("rock.png", 30, 30, rock(30))
    kit.write_png("basket.png", 96, 36, basket(96, 36))
    kit.write_png("spark.png", 8, 8, lambda x, y: (255, 235, 140, max(0, 255 - int(70 * math.hypot(x - 3.5, y - 3.5)))))
    tile = (40, 70, 150, 255), (150, 190, 255, 255)
    kit.sheet("level.png", 96, 96, [[kit.box(96, 96, *tile, 14)],
                                    [kit.box(96, 96, (70, 110, 210, 255), (240, 245, 255, 255), 14)],
                                    [kit.box(96, 96, (25, 40, 90, 255), (255, 215, 80, 255), 14)],
                                    [locked]])
    kit.sheet("rating.png", 72, 24, [[rating(n) for n in range(4)]])
    kit.write_wav("click.wav", 0.08, 900)
    kit.write_wav("hover.wav", 0.05, 1600)
    kit.write_wav("catch.wav", 0.12, 1200)
    kit.write_wav("bump.wav", 0.2, 200)
    write_music("music.wav", 4.8)


if __name__ == "__main__":
    main()
