#include "PercentEncoding.h"

#include <QByteArray>

#include <charconv>
#include <optional>

namespace kestrel {

namespace {

/// Returns the byte that two hexadecimal digits at the start of the text stand for, or none.
std::optional<char> hexByte(std::string_view text) {
    text = text.substr(0, 2);
    unsigned char value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() < 2 || std::from_chars(text.data(), end, value, 16).ptr != end) {
        return std::nullopt;
    }
    return static_cast<char>(value);
}

} // namespace

std::string percentEncoded(std::string_view path) {
    return QByteArray(path.data(), static_cast<qsizetype>(path.size()))
        .toPercentEncoding("/")
        .toStdString();
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::optional<char> byte =
            text.front() == '%' ? hexByte(text.substr(1)) : std::nullopt;
        result += byte.value_or(text.front());
        text.remove_prefix(byte ? 3 : 1);
    }
    return result;
}

} // namespace kestrel
