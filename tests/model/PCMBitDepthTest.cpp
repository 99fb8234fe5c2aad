#include "PCMBitDepth.h"

#include <gmock/gmock.h>

#include <unordered_set>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

TEST(PCMBitDepth, hasTwoCasesWithDisplayNames) {
    EXPECT_THAT(PCMBitDepth::allCases, ElementsAre(PCMBitDepth::sixteen, PCMBitDepth::twentyFour));
    EXPECT_EQ(PCMBitDepth(PCMBitDepth::sixteen).rawValue(), "16-bit");
    EXPECT_EQ(PCMBitDepth(PCMBitDepth::twentyFour).rawValue(), "24-bit");
    EXPECT_EQ(PCMBitDepth(PCMBitDepth::twentyFour).id(), "24-bit");
}

TEST(PCMBitDepth, parsesExactRawValuesOnly) {
    EXPECT_EQ(PCMBitDepth::fromRawValue("16-bit"), PCMBitDepth::sixteen);
    EXPECT_EQ(PCMBitDepth::fromRawValue("24-bit"), PCMBitDepth::twentyFour);
    for (const char* text : {"16-Bit", "16", "", "32-bit"}) {
        EXPECT_FALSE(PCMBitDepth::fromRawValue(text)) << text;
    }
}

TEST(PCMBitDepth, isHashableByCase) {
    const std::unordered_set<PCMBitDepth> depths{PCMBitDepth::sixteen, PCMBitDepth::twentyFour,
                                                 PCMBitDepth::sixteen};
    EXPECT_EQ(depths.size(), 2U);
}

} // namespace
} // namespace kestrel
