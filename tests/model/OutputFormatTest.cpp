#include "OutputFormat.h"

#include <gmock/gmock.h>

#include <limits>
#include <string>
#include <unordered_set>
#include <utility>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

std::string mp3Level(double quality) {
    return OutputFormat(OutputFormat::mp3).audioArguments(quality, PCMBitDepth::sixteen).at(3);
}

TEST(OutputFormat, listsItsCasesInDisplayOrder) {
    EXPECT_THAT(OutputFormat::allCases,
                ElementsAre(OutputFormat::mp3, OutputFormat::aiff, OutputFormat::wav));
}

TEST(OutputFormat, hasRawValueAsIdAndALowerCaseExtension) {
    const std::pair<OutputFormat, std::pair<std::string, std::string>> rows[] = {
        {OutputFormat::mp3, {"MP3", "mp3"}},
        {OutputFormat::aiff, {"AIFF", "aiff"}},
        {OutputFormat::wav, {"WAV", "wav"}}};
    for (const auto& [format, texts] : rows) {
        EXPECT_EQ(format.rawValue(), texts.first);
        EXPECT_EQ(format.id(), texts.first);
        EXPECT_EQ(format.fileExtension(), texts.second);
        EXPECT_EQ(OutputFormat::fromRawValue(texts.first), format);
    }
}

TEST(OutputFormat, parsesExactRawValuesOnly) {
    for (const char* text : {"mp3", "Mp3", "aiff", "wav", "", "MP3 ", "FLAC"}) {
        EXPECT_FALSE(OutputFormat::fromRawValue(text)) << text;
    }
}

TEST(OutputFormat, isHashableByCase) {
    const std::unordered_set<OutputFormat> formats{OutputFormat::mp3, OutputFormat::wav,
                                                   OutputFormat::mp3};
    EXPECT_EQ(formats.size(), 2U);
}

TEST(OutputFormat, returnsTheArgumentsOfTheDefaultSettings) {
    EXPECT_THAT(OutputFormat(OutputFormat::mp3).audioArguments(82.0, PCMBitDepth::twentyFour),
                ElementsAre("-c:a", "libmp3lame", "-q:a", "2", "-id3v2_version", "3"));
}

TEST(OutputFormat, mapsQualityToVbrLevelRoundingHalfAwayFromZero) {
    const std::pair<double, const char*> rows[] = {
        {100, "0"},  {95, "1"},    {94.999, "1"}, {95.001, "0"},  {85, "2"},
        {82, "2"},   {75, "3"},    {65, "4"},     {55, "5"},      {50, "5"},
        {45, "6"},   {36, "6"},    {35, "7"},     {34, "7"},      {30, "7"},
        {25, "7"},   {0, "7"},     {-1000, "7"},  {104.9, "0"},   {105, "0"},
        {1000, "0"}, {-1e15, "7"}, {1e15, "0"},   {-9.2e19, "7"}, {9.2e19, "0"}};
    for (const auto& [quality, level] : rows) {
        EXPECT_EQ(mp3Level(quality), level) << quality;
    }
}

TEST(OutputFormat, ignoresTheBitDepthForMp3) {
    const OutputFormat format = OutputFormat::mp3;
    EXPECT_EQ(format.audioArguments(60, PCMBitDepth::sixteen),
              format.audioArguments(60, PCMBitDepth::twentyFour));
}

TEST(OutputFormat, choosesThePcmCodecByFormatAndDepthOnly) {
    const OutputFormat aiff = OutputFormat::aiff;
    const OutputFormat wav = OutputFormat::wav;
    for (const double quality : {0.0, 82.0, notANumber, infinite}) {
        EXPECT_THAT(aiff.audioArguments(quality, PCMBitDepth::sixteen),
                    ElementsAre("-c:a", "pcm_s16be"));
        EXPECT_THAT(aiff.audioArguments(quality, PCMBitDepth::twentyFour),
                    ElementsAre("-c:a", "pcm_s24be"));
        EXPECT_THAT(wav.audioArguments(quality, PCMBitDepth::sixteen),
                    ElementsAre("-c:a", "pcm_s16le"));
        EXPECT_THAT(wav.audioArguments(quality, PCMBitDepth::twentyFour),
                    ElementsAre("-c:a", "pcm_s24le"));
    }
}

TEST(OutputFormatDeathTest, abortsOnAQualityThatIsNotFiniteOrOutOfRange) {
    for (const double quality : {notANumber, infinite, -infinite, 1e300, -1e300, 9.3e19, -9.3e19}) {
        EXPECT_DEATH(mp3Level(quality), "Fatal error: MP3 quality") << quality;
    }
}

} // namespace
} // namespace kestrel
