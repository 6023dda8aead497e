// The entry field: typing, width limit, backspace, acceptance, refused characters, the blinking cursor
// and the entry rectangle.
#include <gtest/gtest.h>
#include "screen.h"
#include "testkit.h"
#include "uientrywidget.h"

namespace {

using Ints = std::vector<int>;

// Added to the screen before the field, it is offered every event the field leaves unused.
class Witness : public uiWidget {
public:
    Ints keys;
    const char* getType() override { return "Witness"; }

protected:
    void _update(int, int) override {}
    void _render(int, int) override {}
    bool _inputEvent(e_uiEvent, int, int, int key, bool, bool) override {
        keys.push_back(key);
        return true;
    }
};

class EntryWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    Witness* witness = stage.attach(new Witness());
    uiEntryWidget* entry = stage.add<uiEntryWidget>("uiEntryWidget", "name", {100, 40, 0, 0});

    void SetUp() override {
        svc.gfx.defineFont("mono", 16, 10);
        svc.gfx.defineSprite("caret", 8, 16, {3});
        entry->setFont("mono");
        entry->setCursor("caret");
    }
    void TearDown() override { EXPECT_EQ(svc.gfx.overReleases(), 0); }

    void type(const Ints& codes) {
        for (int c : codes)
            stage.ui().inputEvent(UIE_CHAR, 0, 0, c);
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
    Ints keyDowns;
    entry->keyDownCb = [](uiWidget*, void* client, int key) {
        static_cast<Ints*>(client)->push_back(key);
        return false;
    };
    entry->cbClient = &keyDowns;
    const long long before = svc.memory.allocations();
    type({'a', 'b', '1'});
    EXPECT_EQ(shown(), "AB1/3");
    entry->entryWidth = 3;
    type({'d'}); // a full field refuses
    stage.keyDown(KEY_BACKSPACE);
    EXPECT_EQ(shown(), "AB/2");
    for (int i = 0; i < 3; ++i)
        stage.keyDown(KEY_BACKSPACE); // still used on an empty field
    EXPECT_EQ(shown(), "/0");
    EXPECT_EQ(svc.memory.allocations(), before) << "editing allocates nothing";

    // Control characters, backslashes and glyphs the font lacks are refused; Latin-1 small letters become
    // capitals; the low 16 bits are the character.
    entry->entryWidth = 20;
    svc.gfx.setMissingGlyph("mono", 'Q');
    type({'\t', '\r', 7, '\\', 0x109, 0, 'q', 0xE9, 0xFF, 0xF7, 0x10000 + 'z', 0x20AC, '~'});
    EXPECT_EQ(std::vector<unsigned int>(entry->getText(), entry->getText() + entry->length),
              (std::vector<unsigned int>{0xC9, 0xDF, 0xD7, 'Z', 0x20AC, '~'}));
    EXPECT_EQ(witness->keys, (Ints{'d', '\t', '\r', 7, '\\', 0x109, 0, 'q'}));

    entry->reset();
    type({'o', 'k'});
    stage.keyDown('A'); // other keys are not used
    stage.keyDown(KEY_ENTER);
    EXPECT_TRUE(entry->isAccepted());
    type({'x'}); // an accepted field ignores input and passes nothing on
    stage.keyDown(KEY_BACKSPACE);
    stage.keyDown(KEY_ENTER);
    EXPECT_EQ(shown(), "OK/2");
    EXPECT_EQ(keyDowns, Ints{13}) << "Enter goes on to the key callback";
    EXPECT_EQ(witness->keys.size(), 13u); // and Enter, which the callback did not take
    entry->reset();
    EXPECT_FALSE(entry->isAccepted());
    EXPECT_EQ(shown(), "/0");
    stage.keyDown(KEY_PAD_ENTER);
    EXPECT_TRUE(entry->isAccepted()) << "154 acts as Enter";
    entry->reset();
    entry->acceptOnEnter = false; // the key only reaches the callback
    stage.keyDown(KEY_ENTER);
    EXPECT_FALSE(entry->isAccepted());
    EXPECT_EQ(keyDowns, (Ints{13, 154, 13}));

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
    std::vector<std::string> order;
    for (const auto& call : svc.gfx.calls)
        order.push_back(call.fn);
    EXPECT_EQ(order, (std::vector<std::string>{"getTextRect", "blt", "print"}))
        << "the cursor, then the text";
    EXPECT_EQ(svc.gfx.ints("getTextRect").at(0), (Ints{entry->font, 0, 100, 40}));
    EXPECT_EQ(svc.gfx.ints("blt").at(0), (Ints{0, entry->cursor, 120, 40, 0, 0, 255}));

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

TEST_F(EntryWidget, HitTestsUseTheEntryRectangleAndCursorSpritesAreGivenBack) {
    entry->entryRect = {100, 40, 200, 56};
    EXPECT_TRUE(entry->testBounds(199, 55));
    EXPECT_FALSE(entry->testBounds(200, 40));
    EXPECT_FALSE(entry->testBounds(100, 56));
    EXPECT_EQ(entry->getWidth() * 100 + entry->getHeight(), 10016);
    _uiTrace_s* hit = stage.ui().trace(0, 150, 50, "uiEntryWidget");
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, entry);
    svc.memory.free(uiWidget::kUIPool, hit);

    EXPECT_TRUE(entry->setCursor("caret"));
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the old cursor goes back when a new one is set";
    svc.gfx.failSprite("none");
    EXPECT_FALSE(entry->setCursor("none"));
    EXPECT_EQ(entry->cursor, -1);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_TRUE(cursor(16).empty());
    entry->setCursor("caret");
    entry->detachFromParent();
    delete entry;
    EXPECT_EQ(svc.gfx.liveSprites(), 0) << "destroying the field gives its cursor back";
}

TEST_F(EntryWidget, CopiesShareTheFontTakeACursorOfTheirOwnAndNoPlaceInTheTree) {
    svc.gfx.defineFont("other", 16, 10);
    type({'a', 'b'});
    {
        uiEntryWidget copy(*entry);
        EXPECT_EQ(testkit::toUtf8(copy.getText()) + "/" + std::to_string(copy.length), "AB/2");
        EXPECT_STREQ(copy.name, "name");
        EXPECT_EQ(copy.rect.x, 100);
        EXPECT_EQ(copy.getParent(), nullptr);
        EXPECT_EQ(copy.font, entry->font);
        EXPECT_EQ(svc.gfx.liveFonts() * 10 + svc.gfx.liveSprites(), 22);
        EXPECT_TRUE(copy.setFont("other")); // gives back the copy's own reference only
        copy.reset();
        copy = *entry;
        EXPECT_EQ(copy.length, 2);
        EXPECT_EQ(copy.font, entry->font);
        EXPECT_EQ(svc.gfx.liveFonts() * 10 + svc.gfx.liveSprites(), 22);
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the copy gave its own cursor back";
}

TEST_F(EntryWidget, DescriptionKeysAndMistakes) {
    svc.gfx.failSprite("nosprite");
    testkit::Screen screen(
        svc, "form = uiNonVisualWidget\n{\n    child centre = uiEntryWidget\n    {\n"
             "        text = \"ABCDEFGHIJKLMNO\"\n        entrywidth = 4\n        x = 100\n"
             "        y = 40\n        justify = CENTER\n        entryrectx = 50\n"
             "        entryrecty = 16\n        cursorrate = 250\n        cursor = caret\n"
             "        endhidecursor = true\n        acceptonenter = false\n    }\n"
             "    child right = uiEntryWidget\n    {\n        x = 100\n        justify = RIGHT\n"
             "        entryrectx = 50\n    }\n    child early = uiEntryWidget\n    {\n"
             "        entryrectx = 50\n        x = 100\n    }\n    child e = uiEntryWidget\n"
             "    {\n        entrywidth 5\n        entrywidth = wide\n        cursorrate = -5\n"
             "        cursor = nosprite\n        cursor\n        entryrectx =\n"
             "        entryrecty = 1.5\n        endhidecursor true\n    }\n}\n");
    auto* centre = static_cast<uiEntryWidget*>(screen.find("centre"));
    auto* right = static_cast<uiEntryWidget*>(screen.find("right"));
    auto* early = static_cast<uiEntryWidget*>(screen.find("early"));
    auto* e = static_cast<uiEntryWidget*>(screen.find("e"));
    ASSERT_TRUE(centre && right && early && e);
    EXPECT_EQ(testkit::toUtf8(centre->getText()), "ABCDEFGHIJ") << "cut by the width in force when read";
    EXPECT_EQ(centre->length * 100 + centre->entryWidth, 1004);
    const _uiRect_s& r = centre->entryRect;
    EXPECT_EQ((Ints{r.x, r.y, r.x2, r.y2}), (Ints{75, 40, 125, 56}));
    EXPECT_EQ(centre->cursorRate, 250u);
    EXPECT_NE(centre->cursor, -1);
    EXPECT_TRUE(centre->endHideCursor);
    EXPECT_FALSE(centre->acceptOnEnter);
    EXPECT_EQ((Ints{right->entryRect.x, right->entryRect.x2, early->entryRect.x, early->entryRect.x2}),
              (Ints{50, 100, 0, 50}))
        << "placed by the x read so far";
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00entrywidth = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00entrywidth = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00cursorrate = val^c\"\f\n"
                              "2: ...failed to create cursor: nosprite for e\f\n"
                              "2: ...expected: \"^C00FF00cursor = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00entryrectx = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00entryrecty = val^c\"\f\n"
                              "2: ...expected: \"^C00FF00endhidecursor = BOOLEAN^c\"\f\n");
    EXPECT_EQ((Ints{e->entryWidth, int(e->cursorRate), e->cursor, e->entryRect.x2, e->entryRect.y2}),
              (Ints{10, 500, -1, 0, 0}));
}

} // namespace
