#include "ConversionSettings.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(ConversionSettings, defaultToMp3OfQuality82WithoutOverwriting) {
    const ConversionSettings settings;
    EXPECT_EQ(settings.format, OutputFormat::mp3);
    EXPECT_EQ(settings.bitDepth, PCMBitDepth::twentyFour);
    EXPECT_EQ(settings.quality, 82.0);
    EXPECT_FALSE(settings.overwrite);
}

TEST(ConversionSettings, areNotValidated) {
    ConversionSettings settings;
    settings.quality = -5;
    EXPECT_EQ(settings.quality, -5);
    EXPECT_NE(settings, ConversionSettings());
}

} // namespace
} // namespace kestrel
