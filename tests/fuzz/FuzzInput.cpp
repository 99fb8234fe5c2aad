#include "FuzzInput.h"

namespace kestrel {

FuzzInput::FuzzInput(const std::uint8_t* data, std::size_t size)
    : bytes_(reinterpret_cast<const char*>(data), size) {}

std::string_view FuzzInput::text() const noexcept {
    return bytes_.substr(0, bytes_.size() - (bytes_.empty() ? 0 : 1));
}

std::uint8_t FuzzInput::choice() const noexcept {
    return bytes_.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(bytes_.back());
}

std::string FuzzInput::textWithRuns(char character, std::size_t length) const {
    int runs = choice() >= 128 ? 2 : 0;
    std::string result;
    for (const char c : text()) {
        if (c == '\xFF' && runs > 0) {
            result.append(length, character);
            --runs;
        } else {
            result += c;
        }
    }
    return result;
}

} // namespace kestrel
