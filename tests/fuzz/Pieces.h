#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace kestrel {

/// The text in pieces of 0 to some bytes each, at most 2 to 5000 as the seed decides; those of a
/// long text are long.
inline std::vector<std::string_view> pieces(std::string_view text, std::uint8_t seed) {
    constexpr std::array<std::size_t, 4> lengths = {2, 7, 40, 5000};
    const std::size_t longest =
        text.size() > 4096 ? lengths.back() : lengths[seed % lengths.size()];
    // A fixed seed cuts the same input at the same places in every run.
    std::minstd_rand random(seed + 1U);
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const std::size_t length = random() % (longest + 1);
        result.push_back(text.substr(0, length));
        text.remove_prefix(result.back().size());
    }
    return result;
}

/// The text byte by byte.
inline std::vector<std::string_view> singleBytes(std::string_view text) {
    std::vector<std::string_view> result;
    for (; !text.empty(); text.remove_prefix(1)) {
        result.push_back(text.substr(0, 1));
    }
    return result;
}

} // namespace kestrel
