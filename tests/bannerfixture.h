// A digital banner on a stage, for the banner's test files: 100 units wide and 40 high, at (5, 7) on
// depth 12, with the font "led" (20 high, every character 10 wide).
#pragma once
#include <gtest/gtest.h>
#include <string>
#include "testkit.h"
#include "uidigitalbanner.h"

// Reaches the queue and the markup helpers that games deriving from the banner see.
class BannerProbe : public uiDigitalBanner {
public:
    using uiDigitalBanner::_calcLeadingSpace;
    using uiDigitalBanner::_removeMessage;
    dbMessage_t* head() { return messages; }
    unsigned int queued() const { return messageCount; }
};

class BannerTest : public ::testing::Test {
protected:
    BannerTest() {
        svc.gfx.defineFont("led", 20, 10);
        banner->rect = {5, 7, 105, 47};
        banner->setDepth(12u);
        banner->width = 100;
        banner->height = 40;
        banner->setFont("led");
        stage.attach(banner);
    }

    // `n` frames of `ms`, joined by " | ": each print as "TEXT@x,y", with "/cC" when its clip height is not
    // the font's 20 and "/aA" when its alpha is not 255, in drawing order.
    std::string frame(unsigned int ms, int n = 1) {
        std::string out;
        for (int i = 0; i < n; ++i) {
            svc.gfx.clear();
            stage.render(ms);
            out += i ? " | " : "";
            for (const testkit::GfxCall& call : svc.gfx.named("print")) {
                EXPECT_EQ(call.ints[0] * 1000 + call.ints[1], 12000 + banner->font); // depth and font
                EXPECT_EQ(call.ints[2] + call.ints[3], 0);                           // set and justify
                out += (out.empty() || out.back() == ' ' ? "" : " ") + call.text + "@" +
                       std::to_string(call.ints[4]) + "," + std::to_string(call.ints[5]) +
                       (call.ints[6] != 20 ? "/c" + std::to_string(call.ints[6]) : "") +
                       (call.ints[7] != 255 ? "/a" + std::to_string(call.ints[7]) : "");
            }
        }
        return out;
    }
    // The texts shown, each once, in the frames run until the queue is empty (at most `limit` frames).
    std::string textsUntilEmpty(unsigned int ms, int limit = 100) {
        std::string texts, last;
        for (int i = 0; i < limit && !banner->isEmpty(); ++i) {
            frame(ms);
            for (const std::string& text : svc.gfx.texts("print"))
                if (text != last) texts += (texts.empty() ? "" : " ") + (last = text);
        }
        return texts;
    }

    testkit::Services svc; // first: outlives everything the test allocates
    testkit::Stage stage;
    BannerProbe* banner = new BannerProbe; // owned by the stage
};
