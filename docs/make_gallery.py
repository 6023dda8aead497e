#!/usr/bin/python3
"""Makes the README's gallery from make demo's frames: one picture per screen of the game and per
example, scaled to half size, and an animated GIF of the game's whole scripted session.

    make_gallery.py DEMO_DIR SESSION_DIR OUT_DIR

DEMO_DIR is make demo's out/demo, SESSION_DIR holds every frame of the game's session (make gallery
writes them), OUT_DIR receives the pictures (docs/images/gallery). Needs Debian's python3-pil."""
import glob
import os
import sys

from PIL import Image

# (picture, folder of make demo's frames, frame)
SHOTS = [
    ("game-title", "game", "frame0070"), ("game-menu", "game", "frame0105"),
    ("game-options", "game", "frame0161"), ("game-levels", "game", "frame0221"),
    ("game-loading", "game", "frame0266"), ("game-play", "game", "frame0551"),
    ("game-pause", "game", "frame0581"), ("game-results", "game", "frame1511"),
    ("game-name", "game", "frame1596"), ("game-scores", "game", "frame1636"),
    ("example-menu", "menu", "frame117"), ("example-options", "options", "frame064"),
    ("example-entry", "entry", "frame085"), ("example-levels", "levels", "frame060"),
    ("example-loading", "loading", "frame070"), ("example-scoreboard", "scoreboard", "frame185"),
]
HALF = (400, 300)
# The GIF: every fifth frame (100 ms a picture at 20 ms a frame), the long stretch of play cut short.
STEP, PLAY_CUT = 5, range(760, 1420)


def main(demo, session, out):
    os.makedirs(out, exist_ok=True)
    for name, folder, frame in SHOTS:
        Image.open(os.path.join(demo, folder, frame + ".png")).convert("RGB").resize(HALF, Image.LANCZOS).save(
            os.path.join(out, name + ".png"), optimize=True)
    frames = sorted(glob.glob(os.path.join(session, "frame*.png")))
    keep = [f for i, f in enumerate(frames) if i % STEP == 0 and i not in PLAY_CUT]
    # One palette for the whole GIF, without dithering, so unchanged parts stay the same between pictures.
    shrunk = [Image.open(f).convert("RGB").resize(HALF, Image.LANCZOS) for f in keep]
    sample = Image.new("RGB", (HALF[0], HALF[1] * 8))
    for i in range(8):
        sample.paste(shrunk[i * len(shrunk) // 8], (0, HALF[1] * i))
    palette = sample.quantize(128, dither=Image.Dither.NONE)
    pictures = [p.quantize(palette=palette, dither=Image.Dither.NONE) for p in shrunk]
    pictures[0].save(os.path.join(out, "game-session.gif"), save_all=True, append_images=pictures[1:],
                     duration=STEP * 20, loop=0, optimize=True)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(*sys.argv[1:])
