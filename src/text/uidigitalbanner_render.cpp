// uiDigitalBanner: animating and drawing the head message. All timing happens here, so a banner that is
// not drawn stands still.
#include <cmath>
#include "core/uinumeric.h"
#include "gfxsubsystem.h"
#include "uidigitalbanner.h"

namespace {

// ON and OFF fade at the piece's place in either phase: in when entering, out when leaving.
bool fadesAtPlace(pieceAction_t action) {
    return action == PA_ON || action == PA_OFF;
}

} // namespace

// ---- set-up and curves ------------------------------------------------------------------------------

unsigned int uiDigitalBanner::_calcLeadingSpace(unsigned int length) {
    const unsigned int w = static_cast<unsigned int>(width);
    return length == w ? 0 : (w - length + 1) / 2; // the odd pixel goes to the left
}

void uiDigitalBanner::_initPiece(dbMessagePiece_t* piece, float x) {
    piece->timer = 0;
    piece->state = DBP_ENTERING;
    const float w = static_cast<float>(_strlen(piece->text));
    const float h = static_cast<float>(height);

    dbPieceAction_t& in = piece->in;
    in.startX = in.endX = x;
    in.startY = in.endY = 0.0f;
    switch (in.action) {
    case PA_LEFT:
        in.startX = static_cast<float>(width);
        break;
    case PA_RIGHT:
        in.startX = -w;
        break;
    case PA_UP:
        in.startY = h;
        break;
    case PA_DOWN:
        in.startY = -h;
        break;
    default:
        break; // fading and flashing pieces stay at their place
    }

    dbPieceAction_t& out = piece->out;
    out.startX = out.endX = x;
    out.startY = out.endY = 0.0f;
    switch (out.action) {
    case PA_LEFT:
        out.endX = -w;
        break;
    case PA_RIGHT:
        out.endX = static_cast<float>(width);
        break;
    case PA_UP:
        out.endY = -h;
        break;
    case PA_DOWN:
        out.endY = h;
        break;
    default:
        break;
    }
}

// Curves are computed in double precision, multiplying before dividing, so that whole-number positions
// and alphas come out whole; the float results lean towards zero (see ui::floatTowardZero).
float uiDigitalBanner::_updatePosition(float start, float end, int t, int duration) {
    if (duration < 1 || t < 1) return start;
    return ui::floatTowardZero(start + (static_cast<double>(end) - start) * t / duration);
}

float uiDigitalBanner::_updateAlpha(dbPieceAction_t* phase, int t) {
    if (phase->duration < 1) return 255.0f;
    if (t < phase->delay) return 0.0f;
    const double elapsed = static_cast<double>(t) - phase->delay;
    switch (phase->action) {
    case PA_ON:
    case PA_OFF:
        return ui::floatTowardZero(255.0 * elapsed / phase->duration);
    case PA_FLASH: {
        const double pi = 3.1415927f, halfPi = 1.5707964f; // the single-precision constants
        const double angle = ((phase->flashes - 1.0) * pi + halfPi) * elapsed / phase->duration;
        return ui::floatTowardZero(std::fabs(std::sin(angle)) * 255.0);
    }
    default:
        return 255.0f;
    }
}

void uiDigitalBanner::_startMessage(dbMessage_t* message) {
    float x = static_cast<float>(_calcLeadingSpace(static_cast<unsigned int>(message->length)));
    for (unsigned int i = 0; i < message->pieceCount; ++i) {
        _initPiece(&message->pieces[i], x);
        x += static_cast<float>(_strlen(message->pieces[i].text));
    }
    message->started = true;
}

// In the float arithmetic of the scale, so that whole products come out whole (10 ms at 0.7f is 7 ms). A
// negative or NaN scale stops the clock like a scale of 0: time does not run backwards.
int uiDigitalBanner::_frameStep() const {
    const float step = static_cast<float>(s_iDeltaTime) * timeScale;
    return step > 0.0f ? ui::truncToInt(step) : 0;
}

// ---- drawing ----------------------------------------------------------------------------------------

void uiDigitalBanner::_render(int x, int y) {
    dbMessage_t* message = messages;
    if (!message) return;
    if (!message->started) _startMessage(message);
    if (message->pieceCount == 0) {
        _removeMessage(message);
        return;
    }
    const int step = _frameStep();
    bool done = true;
    for (unsigned int i = 0; i < message->pieceCount; ++i) {
        dbMessagePiece_t* piece = &message->pieces[i];
        _renderPiece(piece, message->next != nullptr, x + rect.x, y + rect.y, step);
        done = done && piece->state == DBP_DONE;
    }
    if (done) _removeMessage(message);
}

void uiDigitalBanner::_renderPiece(dbMessagePiece_t* piece, bool messageWaiting, int ox, int oy, int step) {
    switch (piece->state) {
    case DBP_ENTERING:
        _renderPhase(piece, false, ox, oy, step);
        break;
    case DBP_HOLDING:
        if (piece->hold == -1) {
            // Leaving starts at once; this frame still draws in place and counts towards the leaving.
            if (messageWaiting) {
                piece->timer = 0;
                piece->state = DBP_LEAVING;
            }
        } else if (piece->timer > piece->hold && !paused) {
            piece->timer = piece->hold;
        }
        _draw(piece, ox, oy, piece->out.startX, piece->out.startY, fontHeight, 255);
        if (piece->state == DBP_HOLDING && piece->timer == piece->hold) {
            piece->timer = 0;
            piece->state = DBP_LEAVING;
        } else {
            piece->timer = ui::clampedSum(piece->timer, step);
        }
        break;
    case DBP_LEAVING:
        _renderPhase(piece, true, ox, oy, step);
        break;
    default:
        break; // done: nothing to draw
    }
}

// Entering or leaving. While paused the timer may run past the phase's end; the piece is then shown as it
// is at the end, neither beyond its end point nor beyond full fade.
void uiDigitalBanner::_renderPhase(dbMessagePiece_t* piece, bool leaving, int ox, int oy, int step) {
    dbPieceAction_t* phase = leaving ? &piece->out : &piece->in;
    const int end = ui::clampToInt(static_cast<long long>(phase->delay) + phase->duration);
    if (piece->timer > end && !paused) piece->timer = end;
    const int timer = piece->timer > end ? end : piece->timer;

    const int t = ui::clampToInt(static_cast<long long>(timer) - phase->delay);
    const float yPos = _updatePosition(phase->startY, phase->endY, t, phase->duration);
    const int yOff = ui::truncToInt(yPos) < 0 ? 0 : ui::truncToInt(yPos);
    const long long clip = height > fontHeight && yOff != 0 ? static_cast<long long>(height) - yOff
                                                            : static_cast<long long>(fontHeight) - yOff;

    const int a = ui::truncToInt(_updateAlpha(phase, timer));
    const int alpha =
        leaving && (phase->action == PA_FLASH || fadesAtPlace(phase->action)) ? 255 - a : a & 0xFF;

    const float xPos = _updatePosition(phase->startX, phase->endX, t, phase->duration);
    _draw(piece, ox, oy, xPos, yPos, clip, alpha);

    if (piece->timer == end) {
        piece->timer = 0;
        piece->state = leaving ? DBP_DONE : DBP_HOLDING;
    } else {
        piece->timer = ui::clampedSum(piece->timer, step);
    }
}

// (x, y) is the piece's position relative to the origin (ox, oy); each is truncated on its own.
void uiDigitalBanner::_draw(const dbMessagePiece_t* piece, int ox, int oy, float x, float y, long long clip,
                            int alpha) {
    if (!g_gfx) return;
    const int px = ui::clampToInt(static_cast<long long>(ox) + ui::truncToInt(x));
    const int py = ui::clampToInt(static_cast<long long>(oy) + ui::truncToInt(y));
    g_gfx->print(static_cast<int>(depth), font, 0, 0, px, py, ui::clampToInt(clip), alpha, piece->text);
}
