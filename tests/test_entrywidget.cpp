// The entry field: typing, width limit, backspace, acceptance, refused characters, the blinking cursor
// and the entry rectangle.
#include <gtest/gtest.h>
#include "callbacklog.h"
#include "screen.h"
#include "testkit.h"
#include "uientrywidget.h"

namespace {

using Ints = std::vector<int>;

class EntryWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    uiEntryWidget* entry = stage.add<uiEntryWidget>("uiEntryWidget", "name", {100, 40, 0, 0});

    void SetUp() override {
        svc.gfx.defineFont("mono", 16, 10);
        svc.gfx.defineSprite("caret", 8, 16, {3});
        entry->setFont("mono");
        entry->setCursor("caret");
    }
    void TearDown() override { EXPECT_EQ(svc.gfx.overReleases(), 0); }

    // Sends each key as a character (or key-down) event; the keys the field left unused.
    Ints type(const Ints& keys, e_uiEvent kind = UIE_CHAR) {
        Ints unused;
        for (int key : keys)
            if (!entry->inputEvent(kind, 0, 0, key, false, false)) unused.push_back(key);
        return unused;
    }
    std::string shown() const {
        return testkit::toUtf8(entry->getText()) + "/" + std::to_string(entry->length);
    }
    // x, y and frame of each cursor draw of one frame.
    std::vector<Ints> cursor(unsigned int ms) {
        std::vector<Ints> out;
        for (const Ints& b : testkit::renderFrame(svc.gfx, stage.ui(), ms))
            out.push_back({b[2], b[3], b[5]});
        return out;
    }
};

TEST_F(EntryWidget, TypingEditingAndAcceptance) {
    testkit::CallbackLog game; // the game's key handler, which takes nothing
    game.consume = false;
    game.watch(entry, testkit::CallbackLog::kKeyDown);
    const long long before = svc.memory.allocations();
    type({'a', 'b', '1'});
    EXPECT_EQ(shown(), "AB1/3");
    entry->entryWidth = 3;
    EXPECT_EQ(type({'d'}), Ints{'d'}) << "a full field refuses";
    EXPECT_EQ(type({KEY_BACKSPACE, 'A'}, UIE_KEY_DOWN), Ints{'A'}) << "other keys are not used";
    EXPECT_EQ(shown(), "AB/2");
    EXPECT_EQ(type({KEY_BACKSPACE, KEY_BACKSPACE, KEY_BACKSPACE}, UIE_KEY_DOWN), Ints{}) << "also when empty";
    EXPECT_EQ(shown(), "/0");
    EXPECT_EQ(svc.memory.allocations(), before) << "editing allocates nothing";

    // Refused: control characters, backslashes, glyphs the font lacks; Latin-1 small letters are capitalised.
    entry->entryWidth = 20;
    svc.gfx.setMissingGlyph("mono", 'Q');
    EXPECT_EQ(type({'\t', '\r', 7, '\\', 0x109, 0, 'q', 0xE9, 0xFF, 0xF7, 0x10000 + 'z', 0x20AC, '~'}),
              (Ints{'\t', '\r', 7, '\\', 0x109, 0, 'q'}));
    EXPECT_EQ(std::vector<unsigned int>(entry->getText(), entry->getText() + entry->length),
              (std::vector<unsigned int>{0xC9, 0xDF, 0xD7, 'Z', 0x20AC, '~'}));

    // Enter (and 154) accepts and goes on to the key callback; an accepted field uses no input.
    entry->reset();
    type({'o', 'k'});
    EXPECT_EQ(type({KEY_ENTER}, UIE_KEY_DOWN), Ints{KEY_ENTER}) << "the callback did not take it";
    EXPECT_TRUE(entry->isAccepted());
    EXPECT_EQ(type({'x'}).size() + type({KEY_BACKSPACE, KEY_ENTER}, UIE_KEY_DOWN).size(), 3u);
    EXPECT_EQ(shown(), "OK/2");
    entry->reset();
    type({KEY_PAD_ENTER}, UIE_KEY_DOWN);
    EXPECT_TRUE(entry->isAccepted());
    entry->reset();
    entry->acceptOnEnter = false; // the key only reaches the callback
    type({KEY_ENTER}, UIE_KEY_DOWN);
    EXPECT_FALSE(entry->isAccepted());
    EXPECT_EQ(game.events,
              (std::vector<std::string>{"keydown name 13", "keydown name 154", "keydown name 13"}));

    // Printed texts are cut to the width; the text holds 127 characters whatever the width.
    entry->entryWidth = 10;
    entry->print(0, "ABCDEFGHIJKL");
    type({'m'});
    EXPECT_EQ(shown(), "ABCDEFGHIJ/10");
    entry->entryWidth = 500;
    entry->print(0, "%s", std::string(200, 'w').c_str());
    type({'w'});
    EXPECT_EQ(entry->length, 127);
}

TEST_F(EntryWidget, TheCursorBlinksAtTheEndOfTheTextWhileTheFieldHasFocus) {
    type({'a', 'b'});
    svc.gfx.clear();
    stage.render(16);
    EXPECT_EQ(svc.gfx.transcript(), "getTextRect 0 0 100 40 \"AB\"; blt 0 0 120 40 0 0 255; "
                                    "print 0 0 0 0 100 40 -1 255 \"AB\"; ")
        << "the cursor, then the text";

    // A new frame only once more than the rate has gathered; three frames wrap.
    entry->setCursor("caret");
    std::vector<Ints> draws;
    for (unsigned int ms : {500, 1, 501, 501, 501})
        draws.push_back(cursor(ms).at(0));
    EXPECT_EQ(draws,
              (std::vector<Ints>{{120, 40, 0}, {120, 40, 1}, {120, 40, 2}, {120, 40, 0}, {120, 40, 1}}));
    // Without focus no cursor; gaining focus starts it again at its first frame.
    entry->setInputFocus(false, false);
    EXPECT_TRUE(cursor(501).empty());
    entry->setInputFocus(true, false);
    EXPECT_EQ(cursor(16), (std::vector<Ints>{{120, 40, 0}}));
    entry->padding = 3; // moves it by the padding of every character
    EXPECT_EQ(cursor(16), (std::vector<Ints>{{126, 40, 0}}));
    entry->padding = 0;
    entry->entryWidth = 2; // hidden on a full field when asked to
    EXPECT_EQ(cursor(16).size(), 1u);
    entry->endHideCursor = true;
    EXPECT_TRUE(cursor(16).empty());
    entry->endHideCursor = false;

    // It follows the justification; right-justified text has none, but the blinking goes on.
    entry->reset();
    entry->setJustify(uiEntryWidget::JUSTIFY_CENTER);
    EXPECT_EQ(cursor(16), (std::vector<Ints>{{96, 40, 0}})) << "centred on an empty text";
    type({'a', 'b'});
    EXPECT_EQ(cursor(16), (std::vector<Ints>{{110, 40, 0}}));
    entry->setJustify(uiEntryWidget::JUSTIFY_RIGHT);
    EXPECT_TRUE(cursor(501).empty());
    entry->setJustify(uiEntryWidget::JUSTIFY_LEFT);
    EXPECT_EQ(cursor(16), (std::vector<Ints>{{120, 40, 1}}));
}

TEST_F(EntryWidget, HitTestsUseTheEntryRectangleAndCopiesAndDestructionGiveCursorsBack) {
    entry->entryRect = {100, 40, 200, 56};
    EXPECT_EQ((Ints{entry->testBounds(199, 55), entry->testBounds(200, 40), entry->testBounds(100, 56)}),
              (Ints{1, 0, 0}));
    EXPECT_EQ(entry->getWidth() * 100 + entry->getHeight(), 10016);

    EXPECT_TRUE(entry->setCursor("caret"));
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the old cursor goes back when a new one is set";
    // Copies share the font, take a cursor of their own and no place in the tree.
    svc.gfx.defineFont("other", 16, 10);
    type({'a', 'b'});
    {
        uiEntryWidget copy(*entry);
        EXPECT_EQ(testkit::toUtf8(copy.getText()) + std::to_string(copy.length) + copy.name, "AB2name");
        EXPECT_EQ((Ints{copy.rect.x, copy.getParent() == nullptr, copy.font, svc.gfx.liveFonts(),
                        svc.gfx.liveSprites()}),
                  (Ints{100, 1, entry->font, 2, 2}));
        EXPECT_TRUE(copy.setFont("other")); // gives back the copy's own reference only
        copy.reset();
        copy = *entry;
        EXPECT_EQ((Ints{copy.length, copy.font, svc.gfx.liveFonts(), svc.gfx.liveSprites()}),
                  (Ints{2, entry->font, 2, 2}));
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the copy gave its own cursor back";
    svc.gfx.failSprite("none");
    EXPECT_FALSE(entry->setCursor("none"));
    EXPECT_EQ(entry->cursor * 10 + svc.gfx.liveSprites(), -10);
    g_gfx = nullptr; // nor without a graphics service
    EXPECT_FALSE(entry->setCursor("caret"));
    g_gfx = &svc.gfx;
    EXPECT_TRUE(cursor(16).empty());
    entry->setCursor("caret");
    entry->detachFromParent();
    delete entry;
    EXPECT_EQ(svc.gfx.liveSprites(), 0) << "destroying the field gives its cursor back";
}

TEST_F(EntryWidget, DescriptionKeysAndMistakes) {
    svc.gfx.failSprite("nosprite");
    testkit::Screen screen(
        svc, "form = uiNonVisualWidget\n{\nchild centre = uiEntryWidget\n{\ntext = \"ABCDEFGHIJKLMNO\"\n"
             "entrywidth = 4\nx = 100\ny = 40\njustify = CENTER\nentryrectx = 50\nentryrecty = 16\n"
             "cursorrate = 250\ncursor = caret\nendhidecursor = true\nacceptonenter = false\n}\n"
             "child right = uiEntryWidget\n{\nx = 100\njustify = RIGHT\nentryrectx = 50\n}\n"
             "child early = uiEntryWidget\n{\nentryrectx = 50\nx = 100\n}\nchild e = uiEntryWidget\n{\n"
             "entrywidth 5\nentrywidth = wide\ncursorrate = -5\ncursor = nosprite\ncursor\nentryrectx =\n"
             "entryrecty = 1.5\nendhidecursor true\n}\n}\n");
    auto field = [&screen](const char* path) { return static_cast<uiEntryWidget*>(screen.find(path)); };
    uiEntryWidget *centre = field("centre"), *right = field("right"), *early = field("early"),
                  *e = field("e");
    ASSERT_TRUE(centre && right && early && e);
    EXPECT_EQ(testkit::toUtf8(centre->getText()), "ABCDEFGHIJ") << "cut by the width in force when read";
    EXPECT_EQ(centre->length * 100 + centre->entryWidth, 1004);
    const _uiRect_s& r = centre->entryRect;
    EXPECT_EQ((Ints{r.x, r.y, r.x2, r.y2, int(centre->cursorRate), centre->cursor != -1,
                    centre->endHideCursor, centre->acceptOnEnter}),
              (Ints{75, 40, 125, 56, 250, 1, 1, 0}));
    EXPECT_EQ((Ints{right->entryRect.x, right->entryRect.x2, early->entryRect.x, early->entryRect.x2}),
              (Ints{50, 100, 0, 50}))
        << "placed by the x read so far";
    EXPECT_EQ(svc.log.count(), 8) << svc.log.dump(); // one for each malformed line
    EXPECT_TRUE(svc.log.has(2, "...failed to create cursor: nosprite for e\f"));
    EXPECT_EQ((Ints{e->entryWidth, int(e->cursorRate), e->cursor, e->entryRect.x2, e->entryRect.y2}),
              (Ints{10, 500, -1, 0, 0}));
}

} // namespace
