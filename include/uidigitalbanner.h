// uiDigitalBanner: a scoreboard-style message board of fixed width and height.
//
// The game prints messages in the banner markup with a priority; the banner keeps them in a queue sorted
// by priority (lower values first, equal values in print order, at most maxMessages), shows the head
// message centred, and animates each of its pieces through entering, holding and leaving. A message
// printed with a lower priority value than the one showing interrupts it; the interrupted message
// resumes where it stopped once it is at the head again. All timing happens while the banner is drawn,
// scaled by the time scale and held by the pause flag, so a hidden banner stands still.
//
// Markup: a message is a run of pieces, each written
//   ^P|<in>;[<flashes>;]<delay>;<duration>|<text>;<hold>|<out>;[<flashes>;]<delay>;<duration>|^p
// with <in>/<out> one of ON OFF FLASH LEFT RIGHT UP DOWN (case matters; FLASH takes the flash count),
// integers in decimal, 0x-hexadecimal or 0-octal, times in milliseconds, and hold -1 meaning "until
// another message waits behind this one". Nothing may stand before a piece; text after the last piece is
// ignored. A message that does not parse, or is wider than the banner, is logged and dropped.
//
// Description keys (then those of uiWidget):
//   width = int            banner width in font width units (pixels)
//   maxmessages = uint     most messages the queue holds (1)
//   font = name            font of the graphics service; its character widths measure the messages
//   height = int           banner height in pixels (slide distance of UP and DOWN, bottom clip edge)
#pragma once
#include "uiwidget.h"

// How a piece enters or leaves; the markup words are the names without the prefix.
enum pieceAction_t : int {
    PA_ON = 0,    // fades in (entering) / out (leaving) at its place
    PA_OFF = 1,   // the same; the word only reads better for leaving
    PA_FLASH = 2, // flashes a given number of times, ending shown (entering) or hidden (leaving)
    PA_LEFT = 3,  // slides leftwards
    PA_RIGHT = 4, // slides rightwards
    PA_UP = 5,    // rises by one banner height
    PA_DOWN = 6,  // drops by one banner height
    PA_NONE = 7,  // not an action word
};

// One phase (entering or leaving) of a piece. Positions are relative to the banner's origin.
struct dbPieceAction_t {
    // Where the piece moves from and to.
    float startX, startY;
    float endX, endY;
    int delay;            // ms from the start of the phase before the movement begins
    int duration;         // ms the movement or fade lasts
    pieceAction_t action; // how the piece enters or leaves
    int flashes;          // FLASH only
};

// Phases of a piece, in dbMessagePiece_t::state.
enum : int { DBP_ENTERING = 0, DBP_HOLDING = 1, DBP_LEAVING = 2, DBP_DONE = 3 };

// One piece of a message: its text and how it enters, holds and leaves.
struct dbMessagePiece_t {
    char text[128];      // the piece's text
    dbPieceAction_t in;  // entering
    int hold;            // ms in place; -1: until another message waits
    dbPieceAction_t out; // leaving
    int timer;           // ms spent in the current phase
    int state;           // DBP_*
};

// A queued message: its pieces, in a list ordered by priority.
struct dbMessage_t {
    unsigned int priority;    // lower values are shown first
    int length;               // width of all pieces' texts
    bool started;             // the pieces' positions are set up
    unsigned int pieceCount;  // pieces in the block
    dbMessagePiece_t* pieces; // one block, owned by the message
    dbMessage_t* next;        // the next message in the queue
};

class UI_API uiDigitalBanner : public uiWidget {
    UI_DECLARE_WIDGET(uiDigitalBanner)

public:
    uiDigitalBanner();
    // A copy takes the settings and widget fields but not the tree links, and starts with an empty queue.
    uiDigitalBanner(const uiDigitalBanner& other);
    uiDigitalBanner& operator=(const uiDigitalBanner& other);
    ~uiDigitalBanner() override;

    // Formats at most 127 bytes and queues the result as one message of markup.
    virtual void print(unsigned int priority, const char* format, ...);
    // The same with priority 0; the formatted text is not formatted a second time.
    void print(const char* format, ...);

    // The font by name (false when the graphics service has none); holding all timing; its speed (1:
    // as written); whether no message is queued.
    bool setFont(const char* fontName);
    void setPause(bool pause) { paused = pause; }
    void setTimeScale(float scale) { timeScale = scale; }
    bool isEmpty() { return messages == nullptr; }

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _render(int x, int y) override;
    void _update(int x, int y) override;

    // Queue.
    dbMessage_t* _addMessage(unsigned int priority);
    void _removeMessage(dbMessage_t* message);
    void _removeAllMessages();

    // Markup.
    void _extractMessage(char* text, dbMessage_t* message);
    pieceAction_t _getAction(const char* word);
    int _strlen(const char* text);

    // Animation.
    void _initPiece(dbMessagePiece_t* piece, float x);
    unsigned int _calcLeadingSpace(unsigned int length);
    float _updatePosition(float start, float end, int t, int duration);
    float _updateAlpha(dbPieceAction_t* phase, int t);

private:
    void _copySettings(const uiDigitalBanner& other);
    static void _releasePieces(dbMessage_t* message);
    void _startMessage(dbMessage_t* message);
    int _frameStep() const;
    void _renderPiece(dbMessagePiece_t* piece, bool messageWaiting, int ox, int oy, int step);
    void _renderPhase(dbMessagePiece_t* piece, bool leaving, int ox, int oy, int step);
    void _draw(const dbMessagePiece_t* piece, int ox, int oy, float x, float y, long long clip, int alpha);

public:
    // Fields, in declared order.
    int width = 0;
    int height = 0;
    int font = 0;
    int charWidths[256] = {};
    int fontHeight = 0;
    unsigned int maxMessages = 1;
    bool paused = false;
    float timeScale = 1.0f;

protected:
    dbMessage_t* messages = nullptr; // head: the message shown
    unsigned int messageCount = 0;   // messages in the queue
};
