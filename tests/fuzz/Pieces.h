#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace kestrel {

/// Splits the text into chunks of random length. The seed selects the maximum, 2 to 5000 bytes; it
/// is 5000 for texts over 4096 bytes.
inline std::vector<std::string_view> pieces(std::string_view text, std::uint8_t seed) {
    constexpr std::array<std::size_t, 4> lengths = {2, 7, 40, 5000};
    const std::size_t longest =
        text.size() > 4096 ? lengths.back() : lengths[seed % lengths.size()];
    // Reproducible: the same input and seed give the same chunks.
    std::minstd_rand random(seed + 1U);
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const std::size_t length = random() % (longest + 1);
        result.push_back(text.substr(0, length));
        text.remove_prefix(result.back().size());
    }
    return result;
}

/// Splits the text into single bytes.
inline std::vector<std::string_view> singleBytes(std::string_view text) {
    std::vector<std::string_view> result;
    for (; !text.empty(); text.remove_prefix(1)) {
        result.push_back(text.substr(0, 1));
    }
    return result;
}

} // namespace kestrel
