// A digital banner on a stage, for the banner's test files: 100 units wide and 40 high, at (5, 7) on
// depth 12, with the font "led" (20 high, every character 10 wide). Frames come back as the texts the
// banner printed.
#pragma once
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include "stage.h"
#include "testkit.h"
#include "uidigitalbanner.h"

// Reaches the queue and the markup helpers that games deriving from the banner see.
class BannerProbe : public uiDigitalBanner {
public:
    using uiDigitalBanner::_addMessage;
    using uiDigitalBanner::_calcLeadingSpace;
    using uiDigitalBanner::_extractMessage;
    using uiDigitalBanner::_getAction;
    using uiDigitalBanner::_parseParams;
    using uiDigitalBanner::_removeMessage;
    using uiDigitalBanner::_strlen;
    dbMessage_t* head() { return messages; }
    unsigned int queued() const { return messageCount; }
};

class BannerTest : public ::testing::Test {
protected:
    BannerTest() {
        svc.gfx.defineFont("led", 20, 10);
        banner = new BannerProbe;
        banner->rect = {5, 7, 105, 47};
        banner->setDepth(12u);
        banner->width = 100;
        banner->height = 40;
        banner->setFont("led");
        stage.attach(banner);
    }

    // One frame of `ms` milliseconds; each print as "TEXT x,y clip C alpha A" in drawing order.
    std::vector<std::string> frame(unsigned int ms) {
        svc.gfx.clear();
        stage.render(ms);
        std::vector<std::string> out;
        for (const testkit::GfxCall& call : svc.gfx.named("print")) {
            EXPECT_EQ(call.ints[0], 12); // depth
            EXPECT_EQ(call.ints[1], banner->font);
            EXPECT_EQ(call.ints[2], 0); // set
            EXPECT_EQ(call.ints[3], 0); // justify
            out.push_back(call.text + " " + std::to_string(call.ints[4]) + "," +
                          std::to_string(call.ints[5]) + " clip " + std::to_string(call.ints[6]) + " alpha " +
                          std::to_string(call.ints[7]));
        }
        return out;
    }

    // The texts of the frames run until the queue is empty (at most `limit` frames).
    std::vector<std::string> textsUntilEmpty(unsigned int ms, int limit = 100) {
        std::vector<std::string> texts;
        for (int i = 0; i < limit && !banner->isEmpty(); ++i) {
            frame(ms);
            for (const testkit::GfxCall& call : svc.gfx.named("print"))
                if (texts.empty() || texts.back() != call.text) texts.push_back(call.text);
        }
        return texts;
    }

    testkit::Services svc; // first: outlives everything the test allocates
    testkit::Stage stage;
    BannerProbe* banner = nullptr; // owned by the stage
};
