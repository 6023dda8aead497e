// The page side of the browser services (webpage.js): the canvas, its pictures, Web Audio and the page's
// input events. Calls from other threads are carried out on the page's thread.
#pragma once

extern "C" {
// A canvas holding the RGBA pixels; its handle (> 0).
int gameui_page_image(const unsigned char* rgba, int width, int height);
void gameui_page_free(int image);
// Starts a frame: the canvas cleared to the colour.
void gameui_page_clear(int r, int g, int b);
// Draws the part (sx, sy, sw, sh) of a picture scaled to (dx, dy, dw, dh), alpha 0 to 255.
void gameui_page_draw(int image, int sx, int sy, int sw, int sh, int dx, int dy, int dw, int dh, int alpha);
// Whether the page has Web Audio.
int gameui_page_audio();
// Decodes a sound file's bytes for Web Audio under the name (decoding finishes later).
void gameui_page_sound_load(const char* name, const unsigned char* bytes, int size);
// Plays the sound on voice `voice` (stopping what it played) once decoded, at full volume on both sides.
void gameui_page_sound_play(const char* name, int voice);
// Volume of the voice's left and right side (0 to 1), and its playback rate.
void gameui_page_sound_pan(int voice, float left, float right);
void gameui_page_sound_rate(int voice, float rate);
// Volume of all sounds and of the music (0 to 1).
void gameui_page_sound_volume(float sounds, float music);
// Plays the sound as the music, looped, in place of the music before (once decoded).
void gameui_page_music(const char* name);
// Once a frame: gamepads are polled and their buttons sent as input events.
void gameui_page_poll();
}
