// The text widget: printing through the string table, UTF-8, bounds, fonts, justified and padded drawing,
// fades.
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>
#include "screen.h"
#include "stringtable.h"
#include "testkit.h"
#include "uitextwidget.h"

namespace {

using Ints = std::vector<int>;

// A string table that remembers what it was asked; unknown keys answer null.
class Table : public StringTable {
public:
    std::map<std::string, std::string> texts;
    std::vector<std::string> asked;
    const unsigned char* translate(const char* key) override {
        asked.push_back(key);
        auto it = texts.find(key);
        return it == texts.end() ? nullptr : reinterpret_cast<const unsigned char*>(it->second.c_str());
    }
};

std::vector<unsigned int> codes(const uiTextWidget* w) {
    std::vector<unsigned int> out;
    for (const unsigned int* c = w->getText(); *c; ++c)
        out.push_back(*c);
    return out;
}

class TextWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    Table table;
    StringTable* previousTable = g_stringTblPtr;

    void TearDown() override { g_stringTblPtr = previousTable; }

    uiTextWidget* text(const char* name, _uiRect_s r, const char* font, uiWidget* parent = nullptr) {
        auto* w = stage.add<uiTextWidget>("uiTextWidget", name, r, parent);
        if (font) w->setFont(font);
        return w;
    }
    std::vector<testkit::GfxCall> frame(unsigned int ms) {
        svc.gfx.clear();
        stage.render(ms);
        return svc.gfx.named("print");
    }
};

TEST_F(TextWidget, DrawsTheWholeTextAtItsPlaceInOnePrintCall) {
    svc.gfx.defineFont("big", 16, 8);
    uiWidget* panel = stage.add("uiNonVisualWidget", "panel", {100, 50, 300, 250});
    uiTextWidget* t = text("score", {10, 20, 0, 0}, "big", panel);
    t->setDepth(5u);
    t->setJustify(uiTextWidget::JUSTIFY_CENTER);
    t->print(3, "Score %d of %s", 5, "ten");

    const long long before = svc.memory.allocations();
    auto prints = frame(16);
    EXPECT_EQ(svc.memory.allocations(), before) << "printing and drawing allocate nothing";
    ASSERT_EQ(prints.size(), 1u);
    // depth, font, set, justify, x, y, clip height, alpha
    EXPECT_EQ(prints[0].ints, (Ints{5, t->font, 3, 2, 110, 70, -1, 255}));
    EXPECT_EQ(prints[0].text, "Score 5 of ten");
    t->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(t->inputEvent(UIE_MOUSE_DOWN, 15, 25, 0, false, false)) << "takes no input";

    // Without a font nothing is drawn and nothing fades.
    svc.gfx.failFont("missing");
    EXPECT_FALSE(t->setFont("missing"));
    EXPECT_EQ(t->font, -1);
    t->setAlpha(0, 100, 0, false);
    EXPECT_TRUE(frame(200).empty());
    EXPECT_EQ(t->alpha, 255);
}

TEST_F(TextWidget, FormatsAreTranslatedBeforeTheArgumentsAreApplied) {
    uiTextWidget* t = text("t", {}, nullptr);
    t->print(0, "%d points", 12);
    EXPECT_EQ(testkit::toUtf8(t->getText()), "12 points") << "without a table the format is used as given";

    g_stringTblPtr = &table;
    table.texts["SCORE"] = "Punkte: %d";
    t->print(0, "SCORE", 7);
    EXPECT_EQ(testkit::toUtf8(t->getText()), "Punkte: 7");
    EXPECT_EQ(table.asked, std::vector<std::string>{"SCORE"});

    t->print(0, "UNKNOWN %d", 3);
    EXPECT_EQ(testkit::toUtf8(t->getText()), "UNKNOWN 3") << "a key the table does not know is used as is";

    table.asked.clear();
    t->print(4, "");
    EXPECT_TRUE(table.asked.empty()) << "an empty text is not looked up";
    EXPECT_EQ(t->getText()[0], 0u);
    EXPECT_EQ(t->set, 4);
}

TEST_F(TextWidget, DecodesUtf8ByLeadBytesAndKeeps127Characters) {
    uiTextWidget* t = text("t", {}, nullptr);
    t->print(0, "Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_EQ(codes(t), (std::vector<unsigned int>{'C', 'a', 'f', 0xE9, ' ', 0x20AC, ' ', 0x1F600}));

    t->print(0, "A\x80"
                "B");
    EXPECT_EQ(codes(t), std::vector<unsigned int>{'A'}) << "a stray 0x80 decodes to 0 and ends the text";

    t->print(0, "%s", std::string(200, 'x').c_str());
    EXPECT_EQ(codes(t), std::vector<unsigned int>(127, 'x'));

    // Far beyond the format buffer: cut, never overrun.
    const std::string huge(2000, 'y');
    t->print(0, "%s%s", huge.c_str(), huge.c_str());
    EXPECT_EQ(codes(t), std::vector<unsigned int>(127, 'y'));
}

TEST_F(TextWidget, PaddedTextIsDrawnCharacterByCharacter) {
    svc.gfx.defineFont("mono", 16, 10);
    svc.gfx.defineFont("prop", 16, 10);
    svc.gfx.setCharWidth("prop", 'i', 4);
    svc.gfx.setCharWidth("prop", 'm', 6);
    uiTextWidget* t = text("t", {100, 40, 0, 0}, "mono");
    t->padding = 2;
    t->print(0, "abc");

    auto at = [](const std::vector<testkit::GfxCall>& prints) {
        std::vector<std::string> out;
        for (const auto& p : prints)
            out.push_back(p.text + "@" + std::to_string(p.ints[4]) + "," + std::to_string(p.ints[5]) + "/" +
                          std::to_string(p.ints[3]));
        return out;
    };
    using Places = std::vector<std::string>;
    EXPECT_EQ(at(frame(16)), (Places{"a@100,40/0", "b@112,40/0", "c@124,40/0"}));

    // Each character steps by its own width times its index.
    t->setFont("prop");
    t->print(0, "xim");
    EXPECT_EQ(at(frame(16)), (Places{"x@100,40/0", "i@106,40/0", "m@116,40/0"}));

    // Right: the last character stands at the origin; each step uses the width of the mirrored character.
    t->setJustify(uiTextWidget::JUSTIFY_RIGHT);
    EXPECT_EQ(at(frame(16)), (Places{"x@84,40/1", "i@94,40/1", "m@100,40/1"}));

    // Centre: the left-justified layout (boxes 0..10, 6..10, 16..22) centred on the origin.
    t->setJustify(uiTextWidget::JUSTIFY_CENTER);
    EXPECT_EQ(at(frame(16)), (Places{"x@89,40/0", "i@95,40/0", "m@105,40/0"}));
    t->setJustify(3);
    EXPECT_EQ(at(frame(16)), (Places{"x@89,40/0", "i@95,40/0", "m@105,40/0"})) << "several bits centre too";
}

TEST_F(TextWidget, TheTextRectangleMeasuresWhatIsDrawn) {
    svc.gfx.defineFont("mono", 16, 10);
    uiTextWidget* t = text("t", {100, 40, 0, 0}, "mono");
    t->print(0, "abc");
    _uiRect_s r;
    t->getTextRect(&r);
    EXPECT_EQ(svc.gfx.named("getTextRect").back().ints, (Ints{t->font, 0, 0, 0}));
    EXPECT_EQ(r.x, 0);
    EXPECT_EQ(r.x2, 30);
    EXPECT_EQ(t->getHeight(), 16);

    // Padded: the characters' boxes, one font height high.
    t->padding = 2;
    auto rectFor = [&](unsigned int justify) {
        t->setJustify(justify);
        t->getTextRect(&r);
        return Ints{r.x, r.y, r.x2, r.y2};
    };
    EXPECT_EQ(rectFor(0), (Ints{0, 0, 34, 16}));
    EXPECT_EQ(rectFor(1), (Ints{-34, 0, 0, 16}));
    EXPECT_EQ(rectFor(2), (Ints{-17, 0, 17, 16}));
    EXPECT_EQ(t->getWidth(), 34);
    EXPECT_EQ(t->getHeight(), 16);
    t->print(0, "");
    EXPECT_EQ(rectFor(2), (Ints{0, 0, 0, 16}));
}

// The fade itself is the one visual widgets use; here it has to run frame by frame and recurse.
TEST_F(TextWidget, FadesRunFrameByFrameAndAlphaPassesToChildrenUnlessIgnored) {
    svc.gfx.defineFont("big", 16, 8);
    uiTextWidget* t = text("t", {}, "big");
    t->print(0, "fade");
    t->setAlpha(0, 1000, 0, false);
    EXPECT_EQ(frame(500).at(0).ints[7], 127);
    EXPECT_EQ(frame(500).at(0).ints[7], 0);

    uiTextWidget* child = text("child", {}, nullptr, t);
    t->setAlpha(40, 0, 0, true);
    EXPECT_EQ(child->alpha, 40);
    t->setWidgetFlags(t->getWidgetFlags() | WF_IGNORE_ALPHA);
    const unsigned int fadeTime = t->fadeTime;
    t->setAlpha(90, 100, 0, true);
    EXPECT_EQ(t->targetAlpha, 40);
    EXPECT_EQ(t->fadeTime, fadeTime);
    EXPECT_EQ(child->targetAlpha, 40) << "the call is not passed on";
}

TEST_F(TextWidget, FontsByNameAndById) {
    svc.gfx.defineFont("small", 8, 4);
    uiTextWidget* t = text("t", {}, nullptr);
    uiTextWidget* other = text("other", {}, "small");

    // By name: the held font goes back before the next is created.
    EXPECT_TRUE(t->setFont("big"));
    const int big = t->font;
    svc.gfx.clear();
    EXPECT_TRUE(t->setFont("huge"));
    ASSERT_EQ(svc.gfx.calls.size(), 2u);
    EXPECT_EQ(svc.gfx.calls[0].fn, "releaseFont");
    EXPECT_EQ(svc.gfx.calls[0].ints, Ints{big});
    EXPECT_EQ(svc.gfx.calls[1].fn, "createFont");
    EXPECT_EQ(svc.gfx.calls[1].text, "huge");

    // By id: another widget's font is created again by its name.
    const int huge = t->font;
    svc.gfx.clear();
    EXPECT_TRUE(t->setFont(other->font));
    EXPECT_EQ(svc.gfx.named("releaseFont").at(0).ints, Ints{huge});
    EXPECT_EQ(svc.gfx.named("createFont").at(0).text, "small");
    EXPECT_EQ(t->font, other->font);

    // The held id again: nothing is released before the font is created again.
    svc.gfx.clear();
    EXPECT_TRUE(t->setFont(t->font));
    EXPECT_EQ(svc.gfx.count("releaseFont"), 0);
    EXPECT_EQ(svc.gfx.count("createFont"), 1);

    // An id that names no font: the released font is dropped and nothing is drawn with it.
    t->print(0, "x");
    svc.gfx.clear();
    EXPECT_FALSE(t->setFont(99));
    EXPECT_EQ(svc.gfx.count("releaseFont"), 1);
    EXPECT_EQ(t->font, -1);
    for (const auto& p : frame(16))
        EXPECT_NE(p.text, "x");
    EXPECT_EQ(svc.gfx.overReleases(), 0);
}

TEST_F(TextWidget, DescriptionKeysAndMistakes) {
    g_stringTblPtr = &table;
    table.texts["GREETING"] = "Gr\xC3\xBC\xC3\x9F"
                              "e 100%";
    svc.gfx.failFont("nofont");
    testkit::Screen screen(svc, "t = uiTextWidget\n{\n"
                                "    font = big\n"
                                "    justify = RIGHT\n"
                                "    justify = center\n"
                                "    set = 4\n"
                                "    padding = 3\n"
                                "    text = \"GREETING\"\n"
                                "    text = \"\"\n"
                                "    font\n"
                                "    justify = MIDDLE\n"
                                "    justify RIGHT\n"
                                "    text \"x\"\n"
                                "}\n");
    auto* t = static_cast<uiTextWidget*>(screen.root());
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(svc.gfx.named("createFont").at(0).text, "big");
    EXPECT_NE(t->font, -1);
    EXPECT_EQ(t->justify, 3u) << "justification bits add up";
    EXPECT_EQ(t->set, 4);
    EXPECT_EQ(t->padding, 3);
    EXPECT_EQ(testkit::toUtf8(t->getText()), "Gr\xC3\xBC\xC3\x9F"
                                             "e 100%")
        << "translated, not formatted";
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00font = \"val\"^c\"\f")) << svc.log.dump();
    EXPECT_TRUE(svc.log.has(2, "...expected: \"^C00FF00text = val^c\"\f"));
    EXPECT_EQ(svc.log.count(2, "...expected: \"^C00FF00justify = \"val\"^c\"\f"), 2);
    EXPECT_EQ(svc.log.count(), 4) << svc.log.dump();

    svc.log.clear();
    testkit::Screen other(
        svc, "u = uiTextWidget\n{\n    font = nofont\n    text = \"" + std::string(200, 'L') + "\"\n}\n",
        "other.txt");
    auto* u = static_cast<uiTextWidget*>(other.root());
    EXPECT_TRUE(svc.log.has(2, "...failed to create font: nofont for u\f"));
    EXPECT_EQ(u->font, -1);
    EXPECT_EQ(codes(u), std::vector<unsigned int>(127, 'L'));
}

} // namespace
