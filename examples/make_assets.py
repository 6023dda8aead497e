#!/usr/bin/env python3
"""Writes the example screens' pictures into examples/assets (PNG, standard library only).

Run from anywhere: python3 examples/make_assets.py. The pictures are committed; run it again after
changing a picture here, then regenerate the golden images (see tests/golden/README.md)."""
import math
import os
import struct
import wave
import zlib

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "assets")


def write_png(name, w, h, paint):
    rows = b"".join(b"\0" + bytes(c for x in range(w) for c in paint(x, y)) for y in range(h))
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", w, h, 8, 6, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")
    with open(os.path.join(OUT, name), "wb") as f:
        f.write(png)


def box(fw, fh, fill, border, radius=6):
    """Paints one rounded frame of fw x fh: border colour on the edge, fill inside, clear corners."""
    def paint(x, y):
        dx = max(radius - x, 0, x - (fw - 1 - radius))
        dy = max(radius - y, 0, y - (fh - 1 - radius))
        d = math.hypot(dx, dy)
        if d > radius:
            return (0, 0, 0, 0)
        edge = d > radius - 2 or x < 2 or y < 2 or x >= fw - 2 or y >= fh - 2
        return border if edge else fill
    return paint


# A 5x7 pixel font for the few letters and digits drawn into the pictures.
GLYPHS = {
    "G": [".###.", "#...#", "#....", "#.###", "#...#", "#...#", ".###."],
    "A": [".###.", "#...#", "#...#", "#####", "#...#", "#...#", "#...#"],
    "M": ["#...#", "##.##", "#.#.#", "#.#.#", "#...#", "#...#", "#...#"],
    "E": ["#####", "#....", "#....", "####.", "#....", "#....", "#####"],
    "U": ["#...#", "#...#", "#...#", "#...#", "#...#", "#...#", ".###."],
    "I": [".###.", "..#..", "..#..", "..#..", "..#..", "..#..", ".###."],
    "1": ["..#..", ".##..", "..#..", "..#..", "..#..", "..#..", ".###."],
    "2": [".###.", "#...#", "....#", "...#.", "..#..", ".#...", "#####"],
    "3": ["####.", "....#", "....#", ".###.", "....#", "....#", "####."],
    "4": ["...#.", "..##.", ".#.#.", "#..#.", "#####", "...#.", "...#."],
    "5": ["#####", "#....", "####.", "....#", "....#", "#...#", ".###."],
    "6": [".###.", "#....", "#....", "####.", "#...#", "#...#", ".###."],
}


def lettered(paint, fw, fh, text, scale, colour, shadow=(0, 0, 0, 160)):
    """Paints `text` centred on a frame painted by `paint`, each font pixel scale x scale, with a shadow."""
    tw, th = (6 * len(text) - 1) * scale, 7 * scale
    left, top = (fw - tw) // 2, (fh - th) // 2

    def ink(x, y):
        gx, gy = (x - left) // scale, (y - top) // scale
        if x < left or y < top or gy >= 7 or gx >= 6 * len(text) or gx % 6 == 5:
            return False
        return GLYPHS[text[gx // 6]][gy][gx % 6] == "#"

    def painted(x, y):
        if ink(x, y):
            return colour
        if ink(x - scale // 2, y - scale // 2):
            return shadow
        return paint(x, y)
    return painted


def sheet(name, fw, fh, rows_cols):
    """rows_cols[r][c] is the painter of frame (row r, column c)."""
    cols = max(len(r) for r in rows_cols)
    def paint(x, y):
        r, c = y // fh, x // fw
        row = rows_cols[r]
        return row[c](x % fw, y % fh) if c < len(row) else (0, 0, 0, 0)
    write_png(name, fw * cols, fh * len(rows_cols), paint)


def write_wav(name, seconds, pitch):
    """A short 16-bit mono tone that falls in pitch and fades out."""
    rate = 22050
    n = int(rate * seconds)
    frames = b"".join(struct.pack("<h", int(9000 * (1 - i / n) * math.sin(2 * math.pi * pitch * (1 - 0.3 * i / n) * i / rate)))
                      for i in range(n))
    with wave.open(os.path.join(OUT, name), "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(2)
        w.setframerate(rate)
        w.writeframes(frames)


def main():
    os.makedirs(OUT, exist_ok=True)
    # Buttons: idle, hover, pressed, disabled.
    sheet("button.png", 200, 44, [[box(200, 44, (40, 70, 140, 255), (140, 180, 255, 255))],
                                  [box(200, 44, (60, 110, 200, 255), (220, 235, 255, 255))],
                                  [box(200, 44, (25, 45, 95, 255), (255, 220, 90, 255))],
                                  [box(200, 44, (70, 70, 70, 255), (110, 110, 110, 255))]])
    sheet("small.png", 44, 44, [[box(44, 44, c, (230, 230, 230, 255), 10)] for c in
                                [(120, 40, 40, 255), (170, 60, 60, 255), (90, 20, 20, 255), (70, 70, 70, 255)]])
    # A logo with the title that pulses through four frames.
    sheet("logo.png", 320, 64, [[lettered(box(320, 64, (30 + 40 * i, 20, 90 + 30 * i, 255), (255, 200, 60, 255), 14),
                                          320, 64, "GAMEUI", 6, (255, 230, 120, 255)) for i in range(4)]])
    write_png("backdrop.png", 800, 600, lambda x, y: (10 + y // 12, 20 + y // 10, 40 + x // 16, 255))
    write_png("panel.png", 420, 320, box(420, 320, (20, 24, 40, 230), (120, 140, 200, 255), 12))
    write_png("spark.png", 8, 8, lambda x, y: (255, 230, 120, max(0, 255 - int(70 * math.hypot(x - 3.5, y - 3.5)))))
    write_png("track.png", 260, 8, box(260, 8, (60, 60, 80, 255), (150, 150, 170, 255), 3))
    write_png("thumb.png", 20, 32, box(20, 32, (230, 190, 60, 255), (255, 255, 255, 255), 4))
    write_png("bar.png", 260, 20, lambda x, y: (40 + x // 3, 200 - x // 4, 60, 255))
    sheet("toggle_off.png", 44, 44, [[box(44, 44, (90, 90, 90, 255), (200, 200, 200, 255), 20)]] * 4)
    sheet("toggle_on.png", 44, 44, [[box(44, 44, (40, 180, 80, 255), (200, 255, 200, 255), 20)]] * 4)
    sheet("radio.png", 36, 36, [[box(36, 36, c, (220, 220, 220, 255), 17)] for c in
                                [(70, 90, 150, 255), (110, 130, 200, 255), (240, 200, 60, 255), (40, 40, 40, 255)]])
    palette = [(200, 80, 80), (80, 200, 80), (80, 80, 200), (200, 200, 80), (200, 80, 200), (80, 200, 200)]
    write_wav("click.wav", 0.08, 900)
    write_wav("highlight.wav", 0.05, 1500)
    # Level icons: one frame per level, numbered.
    sheet("level.png", 64, 64, [[lettered(box(64, 64, c + (255,), (255, 255, 255, 255), 8), 64, 64, str(n + 1), 5,
                                          (255, 255, 255, 255)) for n, c in enumerate(palette)]])
    # Name entry: a field behind each entry and a text cursor that blinks (shown, then empty).
    write_png("field.png", 300, 40, box(300, 40, (10, 12, 24, 255), (90, 110, 170, 255), 6))
    sheet("cursor.png", 12, 26, [[lambda x, y: (255, 220, 90, 255) if 2 <= x < 10 and y >= 20 else (0, 0, 0, 0),
                                  lambda x, y: (0, 0, 0, 0)]])
    # Loading screen: a frame around the bar.
    write_png("barframe.png", 272, 32, box(272, 32, (10, 12, 24, 255), (150, 150, 170, 255), 6))


if __name__ == "__main__":
    main()
