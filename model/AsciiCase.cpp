#include "AsciiCase.h"

#include <algorithm>

namespace kestrel {

std::string asciiLowercased(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return result;
}

} // namespace kestrel
