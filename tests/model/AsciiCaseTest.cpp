#include "AsciiCase.h"

#include <gtest/gtest.h>

namespace kestrel {
namespace {

TEST(AsciiCase, lowercasesAsciiLettersOnly) {
    EXPECT_EQ(asciiLowercased("OPUS.OgA-09[]`{"), "opus.oga-09[]`{");
    EXPECT_EQ(asciiLowercased("I\xc4\xb0\xff"), "i\xc4\xb0\xff");
}

} // namespace
} // namespace kestrel
