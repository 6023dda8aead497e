// Banner markup printed by a game: each input line is one message, with a priority taken from its first
// byte, then the banner animates through enough frames for every piece to enter, hold and leave.
#include <string>
#include "fuzzkit.h"
#include "uidigitalbanner.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testkit::Services svc;
    {
        uiSubsystem ui;
        auto* banner = static_cast<uiDigitalBanner*>(uiWidget::allocWidget("banner", "uiDigitalBanner"));
        if (!banner) __builtin_trap();
        banner->width = 400;
        banner->height = 32;
        banner->maxMessages = 4;
        banner->setFont("digits");
        banner->setWidgetStates(true, true, true, false);
        ui.setTopLevelWidget(banner);
        const std::string text(reinterpret_cast<const char*>(data), size);
        size_t start = 0;
        while (start < text.size()) {
            size_t end = text.find('\n', start);
            if (end == std::string::npos) end = text.size();
            std::string line = text.substr(start, end - start);
            start = end + 1;
            if (line.empty()) continue;
            banner->print(static_cast<unsigned char>(line[0]) % 4, "%s", line.c_str() + 1);
            ui.render(100);
        }
        for (int frame = 0; frame < 40; ++frame)
            ui.render(250);
        ui.setTopLevelWidget(nullptr);
        delete banner;
    }
    fuzzkit::checkClean(svc);
    return 0;
}
