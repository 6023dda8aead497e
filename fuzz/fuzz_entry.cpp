// Two entry fields of a name form, chained by the tab key, driven by a player's input: the first bytes
// configure the first field (width, justification, padding, cursor options), the rest is a sequence of
// events: characters (bytes and 32-bit codes), backspace, Enter, tab, escape, key releases, pointer
// presses, releases and moves, frames, resets, cursor changes and printed texts. After every step the
// fields must keep what they promise: a terminated text of `length` characters within the width,
// typed characters only as allowed capitals, accepted fields unchanged by input, exactly one field
// holding the tab focus, and no allocation by input or frames.
#include <cstdio>
#include <cstdlib>
#include <string>
#include "fuzzkit.h"
#include "uidialog.h"
#include "uientrywidget.h"

namespace {

// Glyphs the font lacks: typing them must be refused.
constexpr unsigned int kMissingGlyphs[] = {'Q', 0xC9, 0x263A};
constexpr int kMaxCharacters = uiTextWidget::kTextCapacity - 1;

const char* const kCursors[] = {"caret", "bar", "nosuch", "other"};
const int kInterestingChars[] = {'a',  'z',  '0',  ' ', '\\',   9,       13, 0,          0xE9,
                                 0xF7, 0xFF, 0x80, 'q', 0x263A, 0x1007A, -1, 0x7FFFFFFF, 0x120A};

#define FUZZ_CHECK(cond)                                                                                     \
    do {                                                                                                     \
        if (!(cond)) {                                                                                       \
            std::fprintf(stderr, "invariant failed: %s (line %d)\n", #cond, __LINE__);                       \
            std::abort();                                                                                    \
        }                                                                                                    \
    } while (0)

// The form, with the first field configured by the input's first six bytes.
std::string description(fuzzkit::Bytes& in) {
    static const char* const kJustify[] = {"justify = LEFT", "justify = RIGHT", "justify = CENTER",
                                           "justify = RIGHT\n        justify = CENTER"};
    const unsigned int options = in.u8();
    const int width = static_cast<int>(in.u8()) - 4; // -4 to 251: below 0 and above 127 included
    const int x = static_cast<int>(in.u8() % 200);
    const int padding = static_cast<signed char>(in.u8()) / 16;
    const unsigned int cursorRate = in.u8() * 4;
    const unsigned int rectWidth = in.u8() * 2;
    char text[2048];
    std::snprintf(text, sizeof text, R"(form = uiDialog
{
    width = 800
    height = 600
    flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS
    child name = uiEntryWidget
    {
        x = %d
        y = 40
        %s
        font = "mono"
        padding = %d
        entrywidth = %d
        endhidecursor = %s
        acceptonenter = %s
        cursorrate = %u
        cursor = "caret"
        entryrectx = %u
        entryrecty = 20
        flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS
    }
    child team = uiEntryWidget
    {
        x = 100
        y = 80
        font = "mono"
        entrywidth = 3
        cursor = "bar"
        entryrectx = 200
        entryrecty = 20
        flags = WF_VISIBLE | WF_ACTIVE | WF_INPUT_FOCUS
    }
    tabentry = form.name
    tabentry = form.team
}
)",
                  x, kJustify[options & 3], padding, width, options & 4 ? "true" : "false",
                  options & 8 ? "false" : "true", cursorRate, rectWidth);
    return text;
}

int capacity(const uiEntryWidget* e) {
    return e->entryWidth < 0 ? 0 : e->entryWidth > kMaxCharacters ? kMaxCharacters : e->entryWidth;
}

bool hasFocus(uiWidget* w) {
    return (w->getWidgetFlags() & WF_INPUT_FOCUS) != 0;
}

struct Snapshot {
    std::u32string text;
    int length;
    bool accepted;
    bool focus;
};

Snapshot snapshot(uiEntryWidget* e) {
    Snapshot s{std::u32string(), e->length, e->accepted, hasFocus(e)};
    for (int i = 0; i < uiTextWidget::kTextCapacity; ++i)
        s.text += static_cast<char32_t>(e->text[i]);
    return s;
}

// What every field promises at any time.
void checkField(uiEntryWidget* e, testkit::RecordingGfx& gfx) {
    FUZZ_CHECK(e->length >= 0 && e->length <= capacity(e));
    for (int i = 0; i < e->length; ++i)
        FUZZ_CHECK(e->text[i] != 0);
    for (int i = e->length; i < uiTextWidget::kTextCapacity; ++i)
        FUZZ_CHECK(e->text[i] == 0);
    if (e->cursor != -1)
        FUZZ_CHECK(e->cursorFrame >= 0 &&
                   (e->cursorFrame == 0 || e->cursorFrame < gfx.getSpriteFrameCount(e->cursor, 0)));
}

bool fontHas(unsigned int code) {
    for (unsigned int missing : kMissingGlyphs)
        if (code == missing) return false;
    return true;
}

// A character the field must take when it has room: printable ASCII other than the backslash, in the font.
bool plainCharacter(int key) {
    if (key < 0x20 || key > 0x7E || key == '\\') return false;
    const unsigned int upper = key >= 'a' && key <= 'z' ? key - 0x20 : key;
    return fontHas(upper);
}

class Form {
public:
    Form(uiSubsystem& ui, testkit::Services& svc, uiWidget* root)
        : m_ui(ui), m_svc(svc), m_dialog(static_cast<uiDialog*>(root)) {
        m_fields[0] = static_cast<uiEntryWidget*>(root->getWidget("form.name", 0, false));
        m_fields[1] = static_cast<uiEntryWidget*>(root->getWidget("form.team", 0, false));
        FUZZ_CHECK(m_fields[0] && m_fields[1]);
        FUZZ_CHECK(m_fields[0]->isType("uiEntryWidget") && m_fields[1]->isType("uiEntryWidget"));
        check();
    }

    void step(fuzzkit::Bytes& in) {
        const unsigned int op = in.u8() % 16;
        uiEntryWidget* field = m_fields[in.u8() & 1];
        switch (op) {
        case 0:
            return input(UIE_CHAR, 0, 0, static_cast<int>(in.u8()));
        case 1:
            return input(UIE_CHAR, 0, 0, static_cast<int>(in.u32()));
        case 2:
            return input(
                UIE_CHAR, 0, 0,
                kInterestingChars[in.u8() % (sizeof kInterestingChars / sizeof kInterestingChars[0])]);
        case 3:
            return input(UIE_KEY_DOWN, 0, 0, KEY_BACKSPACE);
        case 4:
            return input(UIE_KEY_DOWN, 0, 0, in.u8() & 1 ? KEY_PAD_ENTER : KEY_ENTER);
        case 5:
            return input(UIE_KEY_DOWN, 0, 0, 9);
        case 6:
            input(UIE_KEY_DOWN, 0, 0, 27);
            return input(UIE_CHAR, 0, 0, 27);
        case 7:
            return input(UIE_KEY_UP, 0, 0, static_cast<int>(in.u8()));
        case 8:
        case 9:
        case 10: {
            const int x = static_cast<int>(in.u16() % 900) - 50;
            const int y = static_cast<int>(in.u8() % 140) - 10;
            return input(op == 8 ? UIE_MOUSE_DOWN : op == 9 ? UIE_MOUSE_UP : UIE_MOUSE_MOVE, x, y, 0);
        }
        case 11:
            return frame(in.u16(), field == m_fields[0]);
        case 12:
            field->reset();
            FUZZ_CHECK(field->length == 0 && !field->accepted && field->text[0] == 0);
            return check();
        case 13: {
            const char* name = kCursors[in.u8() % 4];
            const bool made = field->setCursor(name);
            FUZZ_CHECK(made == (field->cursor != -1));
            FUZZ_CHECK(field->cursorFrame == 0 && field->cursorTimer == 0);
            return check();
        }
        case 14:
            field->print(static_cast<int>(in.u8() % 3), "%s", in.text(200).c_str());
            return check();
        default:
            m_dialog->reset();
            return check();
        }
    }

private:
    // One event through the subsystem, as a game forwards it; the fields' texts may change only as the
    // focused, not yet accepted field's rules allow.
    void input(e_uiEvent kind, int x, int y, int key) {
        Snapshot before[2] = {snapshot(m_fields[0]), snapshot(m_fields[1])};
        const long long allocations = m_svc.memory.allocations();
        m_ui.inputEvent(kind, x, y, key);
        FUZZ_CHECK(m_svc.memory.allocations() == allocations);
        for (int i = 0; i < 2; ++i) {
            uiEntryWidget* e = m_fields[i];
            const Snapshot& b = before[i];
            if (!b.focus || b.accepted || (kind != UIE_CHAR && kind != UIE_KEY_DOWN)) {
                FUZZ_CHECK(e->length == b.length && snapshot(e).text == b.text && e->accepted == b.accepted);
                continue;
            }
            kind == UIE_CHAR ? checkTyped(e, b, key) : checkKey(e, b, key);
        }
        check();
    }

    void checkTyped(uiEntryWidget* e, const Snapshot& b, int key) {
        if (e->length == b.length) {
            FUZZ_CHECK(snapshot(e).text == b.text);
            FUZZ_CHECK(!(plainCharacter(key) && b.length < capacity(e))); // a plain character is never lost
            return;
        }
        FUZZ_CHECK(e->length == b.length + 1);
        FUZZ_CHECK(snapshot(e).text.compare(0, b.length, b.text, 0, b.length) == 0);
        const unsigned int code = e->text[b.length];
        const unsigned int typed = static_cast<unsigned int>(key) & 0xFFFF;
        const signed char low = static_cast<signed char>(key & 0xFF);
        FUZZ_CHECK(!(low >= 7 && low <= 13) && low != '\\');
        FUZZ_CHECK(code == typed || code + 0x20 == typed);
        FUZZ_CHECK(!(code >= 'a' && code <= 'z') && !(code >= 0xE0 && code <= 0xFF));
        FUZZ_CHECK(fontHas(code));
    }

    void checkKey(uiEntryWidget* e, const Snapshot& b, int key) {
        if (key == KEY_BACKSPACE) {
            FUZZ_CHECK(e->length == (b.length > 0 ? b.length - 1 : 0));
            FUZZ_CHECK(snapshot(e).text.compare(0, e->length, b.text, 0, e->length) == 0);
            return;
        }
        FUZZ_CHECK(e->length == b.length && snapshot(e).text == b.text);
        if (key == KEY_ENTER || key == KEY_PAD_ENTER) FUZZ_CHECK(e->accepted == e->acceptOnEnter);
    }

    void frame(unsigned int ms, bool draw) {
        const long long allocations = m_svc.memory.allocations();
        m_svc.gfx.clear();
        draw ? m_ui.render(ms) : m_ui.update(ms);
        FUZZ_CHECK(m_svc.memory.allocations() == allocations);
        // Cursors are the only sprites drawn, each by the field holding the focus.
        for (const testkit::GfxCall& call : m_svc.gfx.named("blt")) {
            bool focused = false;
            for (uiEntryWidget* e : m_fields)
                focused = focused || (call.ints[1] == e->cursor && hasFocus(e));
            FUZZ_CHECK(focused);
        }
        check();
    }

    void check() {
        for (uiEntryWidget* e : m_fields)
            checkField(e, m_svc.gfx);
        FUZZ_CHECK(hasFocus(m_fields[0]) != hasFocus(m_fields[1])); // tab chaining: one field at a time
    }

    uiSubsystem& m_ui;
    testkit::Services& m_svc;
    uiDialog* m_dialog;
    uiEntryWidget* m_fields[2];
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testkit::Services svc;
    svc.gfx.defineFont("mono", 16, 10);
    for (unsigned int glyph : kMissingGlyphs)
        svc.gfx.setMissingGlyph("mono", glyph);
    svc.gfx.defineSprite("caret", 8, 16, {3});
    svc.gfx.defineSprite("bar", 2, 16, {2});
    svc.gfx.failSprite("nosuch");
    fuzzkit::Bytes in(data, size);
    svc.files.add("form.txt", description(in));
    {
        uiSubsystem ui;
        uiWidget* root = ui.loadUI("form.txt");
        if (!root) __builtin_trap(); // the form must load whatever its options
        ui.setTopLevelWidget(root);
        {
            Form form(ui, svc, root);
            while (in.more())
                form.step(in);
        }
        ui.setTopLevelWidget(nullptr);
        delete root;
        ui.shutdown();
    }
    FUZZ_CHECK(svc.gfx.liveSprites() == 0 && svc.gfx.overReleases() == 0); // cursors are given back
    fuzzkit::checkClean(svc);
    return 0;
}
