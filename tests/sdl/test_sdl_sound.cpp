// The SDL sound service on the dummy audio driver: sounds by name, handles per channel, no hard failure.
#include <gtest/gtest.h>
#include <cstdint>
#include "sdlsound.h"
#include "testkit.h"

// Two seconds of a 16-bit mono square wave: long enough to be still playing when the test starts the
// next sound, however slowly the test runs (under valgrind a tenth of a second had ended by then).
static std::string squareWave() {
    const uint32_t rate = 22050, samples = rate * 2, bytes = samples * 2;
    std::string out;
    auto put = [&out](uint32_t v, int n) {
        for (int i = 0; i < n; ++i)
            out.push_back(static_cast<char>(v >> (8 * i)));
    };
    out += "RIFF";
    put(36 + bytes, 4);
    out += "WAVEfmt ";
    put(16, 4), put(1, 2), put(1, 2), put(rate, 4), put(rate * 2, 4), put(2, 2), put(16, 2);
    out += "data";
    put(bytes, 4);
    for (uint32_t i = 0; i < samples; ++i)
        put((i / 50) % 2 ? 0x2000 : 0xE000, 2);
    return out;
}

TEST(SdlSound, PlaysWavByNameAndAppliesPanAndFrequencyToItsChannel) {
    testkit::LogCapture log;
    Logger::setSink(&log);
    testkit::TempDir dir;
    dir.write("click.wav", squareWave());
    SdlSound sound(dir.path().string());
    ASSERT_TRUE(sound.ok()); // the dummy driver stands in for a missing device
    soundHandle* click = sound.playSound(SOUND_TYPE_UI, "click", false, false);
    ASSERT_NE(click, nullptr);
    EXPECT_TRUE(Mix_Playing(-1) >= 1);
    click->setPan(-0.9f);
    click->setFrequencyScale(1.5f); // restarts the channel with a resampled copy
    EXPECT_TRUE(Mix_Playing(-1) >= 1);
    EXPECT_NE(sound.playSound(SOUND_TYPE_UI, "click.wav", false, false), click); // another channel

    EXPECT_EQ(sound.playSound(SOUND_TYPE_UI, "nothing", false, false), nullptr);
    EXPECT_EQ(sound.playSound(SOUND_TYPE_UI, "nothing", false, false), nullptr);
    EXPECT_TRUE(log.has(1, "SdlSound: could not load sound: \"nothing\"\f"));
    EXPECT_EQ(log.count(), 1) << log.dump(); // a missing sound is looked for once
    Logger::setSink(nullptr);
}
