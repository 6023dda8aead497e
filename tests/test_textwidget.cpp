// The text widget: printing through the string table, UTF-8, bounds, fonts, justified and padded drawing,
// fades.
#include <gtest/gtest.h>
#include "filestringtable.h"
#include "screen.h"
#include "testkit.h"
#include "uitextwidget.h"

namespace {

using Ints = std::vector<int>;

class TextWidget : public ::testing::Test {
protected:
    testkit::Services svc;
    testkit::Stage stage;
    FileStringTable table;
    StringTable* previousTable = g_stringTblPtr;

    void SetUp() override {
        svc.gfx.defineFont("mono", 16, 10);
        svc.gfx.defineFont("prop", 16, 10);
        svc.gfx.setCharWidth("prop", 'i', 4);
        svc.gfx.setCharWidth("prop", 'm', 6);
        svc.files.add("strings.txt", "SCORE = Punkte: %d\nHI = Gr\u00FC\u00DFe 100%\n");
        ASSERT_TRUE(table.load("strings.txt"));
    }
    void TearDown() override { g_stringTblPtr = previousTable; }
    uiTextWidget* text(_uiRect_s r, const char* font, uiWidget* parent = nullptr) {
        auto* w = stage.add<uiTextWidget>("uiTextWidget", "t", r, parent);
        if (font) w->setFont(font);
        return w;
    }
    // Each print of one frame as "text@x,y/justify".
    std::string frame() {
        std::string out;
        const std::vector<Ints> prints = testkit::renderFrame(svc.gfx, stage.ui(), 16, "print");
        for (size_t i = 0; i < prints.size(); ++i)
            out += svc.gfx.texts("print")[i] + "@" + std::to_string(prints[i][4]) + "," +
                   std::to_string(prints[i][5]) + "/" + std::to_string(prints[i][3]) + " ";
        return out;
    }
};

TEST_F(TextWidget, PrintsTranslatedFormattedUtf8TextInOneCallAtItsPlace) {
    uiWidget* panel = stage.add("uiNonVisualWidget", "panel", {100, 50, 300, 250});
    uiTextWidget* t = text({10, 20, 0, 0}, "mono", panel);
    t->setDepth(5u);
    t->setJustify(uiTextWidget::JUSTIFY_CENTER);
    t->print(3, "Score %d of %s", 5, "ten"); // without a table the format is used as given
    const long long before = svc.memory.allocations();
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 16, "print"),
              (std::vector<Ints>{{5, t->font, 3, 2, 110, 70, -1, 255}}));
    EXPECT_EQ(svc.gfx.texts("print"), std::vector<std::string>{"Score 5 of ten"});
    EXPECT_EQ(svc.memory.allocations(), before) << "printing and drawing allocate nothing";
    t->mouseDownCb = [](uiWidget*, void*, int, int) { return true; };
    EXPECT_FALSE(t->inputEvent(UIE_MOUSE_DOWN, 15, 25, 0, false, false)) << "takes no input";

    // Formats are translated, then formatted; unknown keys are used as they are. UTF-8 decodes by lead
    // bytes; a stray 0x80 ends the text; 127 characters are kept, also far beyond the format buffer.
    g_stringTblPtr = &table;
    auto shown = [t](const std::string& format) {
        t->print(0, format.c_str(), 7);
        return testkit::toUtf8(t->getText());
    };
    EXPECT_EQ(shown("SCORE"), "Punkte: 7");
    EXPECT_EQ(shown("UNKNOWN %d"), "UNKNOWN 7");
    EXPECT_EQ(shown("Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"),
              "Caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80");
    EXPECT_EQ(shown("A\200B"), "A");
    EXPECT_EQ(shown(std::string(2000, 'y') + "%d"), std::string(127, 'y'));
    t->print(4, "");
    EXPECT_EQ(t->getText()[0] * 10 + unsigned(t->set), 4u);
}

TEST_F(TextWidget, PaddedTextIsDrawnAndMeasuredCharacterByCharacter) {
    uiTextWidget* t = text({100, 40, 0, 0}, "mono");
    t->print(0, "abc");
    // The characters' boxes, one font height high.
    auto rectFor = [t](unsigned int justify) {
        _uiRect_s r;
        t->setJustify(justify);
        t->getTextRect(&r);
        return Ints{r.x, r.y, r.x2, r.y2, t->getWidth(), t->getHeight()};
    };
    EXPECT_EQ(rectFor(0), (Ints{0, 0, 30, 16, 30, 16}));
    EXPECT_EQ(svc.gfx.ints("getTextRect").back(), (Ints{t->font, 0, 0, 0}));
    t->padding = 2;
    EXPECT_EQ(frame(), "a@100,40/0 b@112,40/0 c@124,40/0 ");
    EXPECT_EQ(rectFor(0), (Ints{0, 0, 34, 16, 34, 16}));
    EXPECT_EQ(rectFor(1), (Ints{-34, 0, 0, 16, 34, 16}));
    EXPECT_EQ(rectFor(2), (Ints{-17, 0, 17, 16, 34, 16}));
    t->padding = -20; // boxes run leftwards: centred on their whole span
    EXPECT_EQ(rectFor(2), (Ints{-15, 0, 15, 16, 30, 16}));
    t->padding = 2;
    t->print(0, "");
    EXPECT_EQ(rectFor(2), (Ints{0, 0, 0, 16, 0, 16}));

    // Left, each character steps by its own width times its index; right, the last stands at the origin
    // and steps use the mirrored character's width; centred is the left layout centred on the origin.
    t->setFont("prop");
    t->print(0, "xim");
    const char* const placed[] = {"x@100,40/0 i@106,40/0 m@116,40/0 ", "x@84,40/1 i@94,40/1 m@100,40/1 ",
                                  "x@89,40/0 i@95,40/0 m@105,40/0 ", "x@89,40/0 i@95,40/0 m@105,40/0 "};
    for (unsigned int justify : {0u, 1u, 2u, 3u}) {
        t->setJustify(justify);
        EXPECT_EQ(frame(), placed[justify]);
    }
}

TEST_F(TextWidget, FadesRunFrameByFrameAndFontsAreTakenById) {
    uiTextWidget* t = text({}, "mono");
    t->print(0, "fade");
    t->setAlpha(0, 1000, 0, false);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 500, "print").at(0)[7], 127);
    EXPECT_EQ(testkit::renderFrame(svc.gfx, stage.ui(), 500, "print").at(0)[7], 0);
    uiTextWidget* child = text({}, nullptr, t);
    t->setAlpha(40, 0, 0, true);
    EXPECT_EQ(child->alpha, 40) << "children fade along";

    // By id another widget's font is created again by its name, and the held one given back.
    EXPECT_TRUE(t->setFont(text({}, "prop")->font));
    EXPECT_EQ(svc.gfx.texts("createFont").back(), "prop");
    EXPECT_EQ(svc.gfx.liveFonts() * 10 + svc.gfx.overReleases(), 20);
}

TEST_F(TextWidget, DescriptionKeysAndMistakes) {
    g_stringTblPtr = &table;
    svc.gfx.failFont("nofont");
    testkit::Screen screen(svc,
                           "t = uiTextWidget\n{\nfont = big\njustify = RIGHT\njustify = center\nset = 4\n"
                           "padding = 3\ntext = \"HI\"\ntext = \"\"\nfont\njustify = MIDDLE\njustify RIGHT\n"
                           "text \"x\"\nchild u = uiTextWidget\n{\nfont = nofont\ntext = \"" +
                               std::string(200, 'L') + "\"\n}\n}\n");
    auto* t = static_cast<uiTextWidget*>(screen.root());
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(svc.gfx.texts("createFont").at(0), "big");
    EXPECT_EQ((Ints{t->font != -1, int(t->justify), t->set, t->padding}), (Ints{1, 3, 4, 3}))
        << "justification bits add up";
    EXPECT_EQ(testkit::toUtf8(t->getText()), "Gr\u00FC\u00DFe 100%") << "translated, not formatted";
    auto* u = static_cast<uiTextWidget*>(screen.find("u"));
    EXPECT_EQ(testkit::toUtf8(u->getText()) + std::to_string(u->font), std::string(127, 'L') + "-1");
    EXPECT_EQ(svc.log.dump(), "2: ...expected: \"^C00FF00font = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00justify = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00justify = \"val\"^c\"\f\n"
                              "2: ...expected: \"^C00FF00text = val^c\"\f\n"
                              "2: ...failed to create font: nofont for u\f\n");
}

} // namespace
