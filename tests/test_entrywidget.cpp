// The entry field: typing, width limit, backspace, acceptance, refused characters, the blinking cursor
// and the entry rectangle.
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "screen.h"
#include "testkit.h"
#include "uientrywidget.h"

namespace {

using Ints = std::vector<int>;

// Added to the screen before the field, it is offered every event the field leaves unused.
class Witness : public uiWidget {
public:
    std::vector<int> keys;
    const char* getType() override { return "Witness"; }

protected:
    void _update(int, int) override {}
    void _render(int, int) override {}
    bool _inputEvent(e_uiEvent, int, int, int key, bool, bool) override {
        keys.push_back(key);
        return true;
    }
};

bool recordKey(uiWidget*, void* client, int key) {
    static_cast<std::vector<int>*>(client)->push_back(key);
    return false;
}

class EntryWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    Witness* witness = new Witness();
    uiEntryWidget* entry = nullptr;

    void SetUp() override {
        svc.gfx.defineFont("mono", 16, 10);
        svc.gfx.defineSprite("caret", 8, 16, {3});
        stage.attach(witness);
        entry = stage.add<uiEntryWidget>("uiEntryWidget", "name", {100, 40, 0, 0});
        entry->setFont("mono");
        entry->setCursor("caret");
    }
    void TearDown() override { EXPECT_EQ(svc.gfx.overReleases(), 0); }

    void type(const std::string& chars) {
        for (unsigned char c : chars)
            stage.ui().inputEvent(UIE_CHAR, 0, 0, c);
    }
    void typeCode(int code) { stage.ui().inputEvent(UIE_CHAR, 0, 0, code); }
    void press(int key) { stage.keyDown(key); }
    std::string shown() const { return testkit::toUtf8(entry->getText()); }
    // The cursor draws of one frame: x, y and frame of each.
    std::vector<Ints> cursorDraws(unsigned int ms) {
        svc.gfx.clear();
        stage.render(ms);
        std::vector<Ints> out;
        for (const auto& b : svc.gfx.named("blt"))
            out.push_back({b.ints[2], b.ints[3], b.ints[5]});
        return out;
    }
};

TEST_F(EntryWidget, TypingStoresCapitalsUpToTheWidth) {
    const long long before = svc.memory.allocations();
    type("ab1");
    EXPECT_EQ(shown(), "AB1");
    EXPECT_EQ(entry->length, 3);
    EXPECT_TRUE(witness->keys.empty()) << "typed characters are used";

    entry->entryWidth = 3;
    type("d");
    EXPECT_EQ(shown(), "AB1");
    EXPECT_EQ(witness->keys, Ints{'d'}) << "a full field refuses";

    press(KEY_BACKSPACE);
    EXPECT_EQ(shown(), "AB");
    EXPECT_EQ(entry->length, 2);
    for (int i = 0; i < 3; ++i)
        press(KEY_BACKSPACE);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(entry->length, 0);
    EXPECT_EQ(witness->keys, Ints{'d'}) << "backspace on an empty field is still used";
    EXPECT_EQ(svc.memory.allocations(), before) << "editing allocates nothing";
}

TEST_F(EntryWidget, RefusesControlCharactersBackslashesAndGlyphsTheFontLacks) {
    entry->entryWidth = 20;
    svc.gfx.setMissingGlyph("mono", 'Q');
    for (int code : Ints{'\t', '\r', 7, '\\', 0x109, 0, 'q'})
        typeCode(code);
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(witness->keys, (Ints{'\t', '\r', 7, '\\', 0x109, 0, 'q'}));

    // Latin-1 small letters become capitals; the low 16 bits are the character.
    for (int code : Ints{0xE9, 0xFF, 0xF7, 0x10000 + 'z', 0x20AC, '~'})
        typeCode(code);
    EXPECT_EQ(std::vector<unsigned int>(entry->getText(), entry->getText() + entry->length),
              (std::vector<unsigned int>{0xC9, 0xDF, 0xD7, 'Z', 0x20AC, '~'}));
    EXPECT_EQ(entry->length, 6);
}

TEST_F(EntryWidget, EnterAcceptsAndTheFieldThenIgnoresInputUntilReset) {
    std::vector<int> keyDowns;
    entry->keyDownCb = recordKey;
    entry->cbClient = &keyDowns;
    type("ok");
    press('A');
    EXPECT_EQ(witness->keys, Ints{'A'}) << "other keys are not used";

    press(KEY_ENTER);
    EXPECT_TRUE(entry->isAccepted());
    EXPECT_EQ(keyDowns, Ints{13}) << "Enter goes on to the key callback";
    witness->keys.clear();
    type("x");
    press(KEY_BACKSPACE);
    EXPECT_EQ(shown(), "OK");
    EXPECT_EQ(witness->keys, (Ints{'x', KEY_BACKSPACE}));
    press(KEY_ENTER);
    EXPECT_EQ(keyDowns, Ints{13}) << "an accepted field passes nothing on";

    entry->reset();
    EXPECT_FALSE(entry->isAccepted());
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(entry->length, 0);
    type("y");
    EXPECT_EQ(shown(), "Y");

    press(KEY_PAD_ENTER);
    EXPECT_TRUE(entry->isAccepted()) << "154 acts as Enter";
    EXPECT_EQ(keyDowns, (Ints{13, 154}));

    // Without acceptance on Enter the key only reaches the callback.
    entry->reset();
    entry->acceptOnEnter = false;
    press(KEY_ENTER);
    EXPECT_FALSE(entry->isAccepted());
    type("z");
    EXPECT_EQ(shown(), "Z");
}

TEST_F(EntryWidget, PrintedTextsAreCutToTheWidth) {
    entry->print(0, "ABCDEFGHIJKL");
    EXPECT_EQ(shown(), "ABCDEFGHIJ");
    EXPECT_EQ(entry->length, 10);
    type("m");
    EXPECT_EQ(shown(), "ABCDEFGHIJ");

    entry->entryWidth = 500;
    entry->print(0, "%s", std::string(200, 'w').c_str());
    EXPECT_EQ(entry->length, 127) << "the text holds 127 characters whatever the width";
    type("w");
    EXPECT_EQ(entry->length, 127);
}

TEST_F(EntryWidget, TheCursorBlinksAtTheEndOfTheTextWhileTheFieldHasFocus) {
    type("ab");
    const int caret = entry->cursor;
    svc.gfx.clear();
    stage.render(16);
    std::vector<std::string> order;
    for (const auto& call : svc.gfx.calls)
        order.push_back(call.fn);
    EXPECT_EQ(order, (std::vector<std::string>{"getTextRect", "blt", "print"}))
        << "the cursor, then the text";
    EXPECT_EQ(svc.gfx.named("getTextRect").at(0).ints, (Ints{entry->font, 0, 100, 40}));
    EXPECT_EQ(svc.gfx.named("blt").at(0).ints, (Ints{0, caret, 120, 40, 0, 0, 255}));

    // A new frame only once more than the rate has gathered; three frames wrap.
    entry->setCursor("caret");
    EXPECT_EQ(cursorDraws(500), (std::vector<Ints>{{120, 40, 0}}));
    EXPECT_EQ(cursorDraws(1), (std::vector<Ints>{{120, 40, 1}}));
    EXPECT_EQ(cursorDraws(501), (std::vector<Ints>{{120, 40, 2}}));
    EXPECT_EQ(cursorDraws(501), (std::vector<Ints>{{120, 40, 0}}));
    EXPECT_EQ(cursorDraws(501), (std::vector<Ints>{{120, 40, 1}}));

    // Without focus no cursor; gaining focus starts it again at its first frame.
    entry->setInputFocus(false, false);
    EXPECT_TRUE(cursorDraws(501).empty());
    entry->setInputFocus(true, false);
    EXPECT_EQ(cursorDraws(16), (std::vector<Ints>{{120, 40, 0}}));

    // Padding moves it by the padding of every character.
    entry->padding = 3;
    EXPECT_EQ(cursorDraws(16), (std::vector<Ints>{{126, 40, 0}}));
    entry->padding = 0;

    // Hidden on a full field when asked to.
    entry->entryWidth = 2;
    EXPECT_EQ(cursorDraws(16).size(), 1u);
    entry->endHideCursor = true;
    EXPECT_TRUE(cursorDraws(16).empty());
}

TEST_F(EntryWidget, TheCursorFollowsTheJustification) {
    entry->setJustify(uiEntryWidget::JUSTIFY_CENTER);
    EXPECT_EQ(cursorDraws(16), (std::vector<Ints>{{96, 40, 0}})) << "centred on an empty text";
    type("ab");
    EXPECT_EQ(cursorDraws(16), (std::vector<Ints>{{110, 40, 0}})) << "at the end of a centred text";

    // Right-justified text has no cursor, but the blinking goes on.
    entry->setJustify(uiEntryWidget::JUSTIFY_RIGHT);
    EXPECT_TRUE(cursorDraws(501).empty());
    entry->setJustify(uiEntryWidget::JUSTIFY_LEFT);
    EXPECT_EQ(cursorDraws(16), (std::vector<Ints>{{120, 40, 1}}));
}

TEST_F(EntryWidget, HitTestsAndSizeUseTheEntryRectangle) {
    entry->entryRect = {100, 40, 200, 56};
    EXPECT_TRUE(entry->testBounds(199, 55));
    EXPECT_FALSE(entry->testBounds(200, 40));
    EXPECT_FALSE(entry->testBounds(100, 56));
    EXPECT_EQ(entry->getWidth(), 100);
    EXPECT_EQ(entry->getHeight(), 16);

    _uiTrace_s* hit = stage.ui().trace(0, 150, 50, "uiEntryWidget");
    ASSERT_NE(hit, nullptr);
    EXPECT_EQ(hit->widget, entry);
    svc.memory.free(uiWidget::kUIPool, hit);
}

TEST_F(EntryWidget, CursorSpritesAreGivenBack) {
    EXPECT_EQ(svc.gfx.liveSprites(), 1);
    EXPECT_TRUE(entry->setCursor("caret"));
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the old cursor goes back when a new one is set";
    svc.gfx.failSprite("none");
    EXPECT_FALSE(entry->setCursor("none"));
    EXPECT_EQ(entry->cursor, -1);
    EXPECT_EQ(svc.gfx.liveSprites(), 0);
    EXPECT_TRUE(cursorDraws(16).empty());

    entry->setCursor("caret");
    entry->detachFromParent();
    delete entry;
    EXPECT_EQ(svc.gfx.liveSprites(), 0) << "destroying the field gives its cursor back";
}

TEST_F(EntryWidget, CopiesShareTheFontTakeACursorOfTheirOwnAndNoPlaceInTheTree) {
    svc.gfx.defineFont("other", 16, 10);
    type("ab");
    {
        uiEntryWidget copy(*entry);
        EXPECT_EQ(testkit::toUtf8(copy.getText()), "AB");
        EXPECT_EQ(copy.length, 2);
        EXPECT_STREQ(copy.name, "name");
        EXPECT_EQ(copy.rect.x, 100);
        EXPECT_EQ(copy.getParent(), nullptr);
        EXPECT_EQ(copy.font, entry->font);
        EXPECT_EQ(svc.gfx.liveFonts(), 2);
        EXPECT_EQ(svc.gfx.liveSprites(), 2);
        EXPECT_TRUE(copy.setFont("other")); // gives back the copy's own reference only
        copy.reset();
        copy = *entry;
        EXPECT_EQ(copy.length, 2);
        EXPECT_EQ(copy.font, entry->font);
        EXPECT_EQ(svc.gfx.liveFonts(), 2);
        EXPECT_EQ(svc.gfx.liveSprites(), 2);
    }
    EXPECT_EQ(svc.gfx.liveSprites(), 1) << "the copy gave its own cursor back";
}

TEST_F(EntryWidget, DescriptionKeys) {
    testkit::Screen screen(svc, "form = uiNonVisualWidget\n{\n"
                                "    child centre = uiEntryWidget\n    {\n"
                                "        text = \"ABCDEFGHIJKLMNO\"\n"
                                "        entrywidth = 4\n"
                                "        x = 100\n"
                                "        y = 40\n"
                                "        justify = CENTER\n"
                                "        entryrectx = 50\n"
                                "        entryrecty = 16\n"
                                "        cursorrate = 250\n"
                                "        cursor = caret\n"
                                "        endhidecursor = true\n"
                                "        acceptonenter = false\n"
                                "    }\n"
                                "    child right = uiEntryWidget\n    {\n"
                                "        x = 100\n"
                                "        justify = RIGHT\n"
                                "        entryrectx = 50\n"
                                "    }\n"
                                "    child early = uiEntryWidget\n    {\n"
                                "        entryrectx = 50\n"
                                "        x = 100\n"
                                "    }\n"
                                "}\n");
    auto* centre = static_cast<uiEntryWidget*>(screen.find("centre"));
    auto* right = static_cast<uiEntryWidget*>(screen.find("right"));
    auto* early = static_cast<uiEntryWidget*>(screen.find("early"));
    ASSERT_TRUE(centre && right && early);
    EXPECT_EQ(svc.log.count(), 0) << svc.log.dump();
    EXPECT_EQ(shown(), "") << "the fixture's own field is untouched";
    EXPECT_EQ(testkit::toUtf8(centre->getText()), "ABCDEFGHIJ") << "cut by the width in force when read";
    EXPECT_EQ(centre->length, 10);
    EXPECT_EQ(centre->entryWidth, 4);
    EXPECT_EQ((Ints{centre->entryRect.x, centre->entryRect.y, centre->entryRect.x2, centre->entryRect.y2}),
              (Ints{75, 40, 125, 56}));
    EXPECT_EQ(centre->cursorRate, 250u);
    EXPECT_NE(centre->cursor, -1);
    EXPECT_TRUE(centre->endHideCursor);
    EXPECT_FALSE(centre->acceptOnEnter);
    EXPECT_EQ(right->entryRect.x, 50);
    EXPECT_EQ(right->entryRect.x2, 100);
    EXPECT_EQ(early->entryRect.x, 0) << "placed by the x read so far";
    EXPECT_EQ(early->entryRect.x2, 50);
}

TEST_F(EntryWidget, DescriptionMistakesAreReported) {
    svc.gfx.failSprite("nosprite");
    testkit::Screen screen(svc, "e = uiEntryWidget\n{\n"
                                "    entrywidth 5\n"
                                "    entrywidth = wide\n"
                                "    cursorrate = -5\n"
                                "    cursor = nosprite\n"
                                "    cursor\n"
                                "    entryrectx =\n"
                                "    entryrecty = 1.5\n"
                                "    endhidecursor true\n"
                                "}\n");
    auto* e = static_cast<uiEntryWidget*>(screen.root());
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00entrywidth = val^c\"\f"), 2) << svc.log.dump();
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00cursorrate = val^c\"\f"), 1);
    EXPECT_EQ(svc.log.count(2, "...failed to create cursor: nosprite for e\f"), 1);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00cursor = \"val\"^c\"\f"), 1);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00entryrectx = val^c\"\f"), 1);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00entryrecty = val^c\"\f"), 1);
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00endhidecursor = BOOLEAN^c\"\f"), 1);
    EXPECT_EQ(svc.log.count(), 8);
    EXPECT_EQ(e->entryWidth, 10);
    EXPECT_EQ(e->cursorRate, 500u);
    EXPECT_EQ(e->cursor, -1);
    EXPECT_EQ(e->entryRect.x2, 0);
    EXPECT_EQ(e->entryRect.y2, 0);
}

} // namespace
