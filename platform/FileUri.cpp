#include "FileUri.h"

#include "AsciiCase.h"

#include <unistd.h>

#include <array>
#include <charconv>
#include <utility>

namespace kestrel {

namespace {

constexpr std::string_view scheme = "file:";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

constexpr bool isUnreserved(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

/// Empty where the machine has no name.
std::string hostName() {
    std::array<char, 256> name{};
    // The last byte stays NUL, whatever is cut off.
    return ::gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data())
                                                            : std::string();
}

bool isThisMachine(std::string_view host) {
    const std::string lowercased = asciiLowercased(host);
    return lowercased.empty() || lowercased == "localhost" ||
           lowercased == asciiLowercased(hostName());
}

/// The byte that two hexadecimal digits at the start of the text stand for.
std::optional<char> hexByte(std::string_view text) {
    text = text.substr(0, 2);
    unsigned char value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() < 2 || std::from_chars(text.data(), end, value, 16).ptr != end) {
        return std::nullopt;
    }
    return static_cast<char>(value);
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

} // namespace

std::string fileUri(const FileURL& url) {
    std::string result = "file://";
    for (const char c : url.path()) {
        if (isUnreserved(c) || c == '/') {
            result += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            result += '%';
            result += hexDigits[byte >> 4U];
            result += hexDigits[byte & 0xFU];
        }
    }
    return result;
}

bool hasFileScheme(std::string_view uri) {
    return asciiLowercased(uri.substr(0, scheme.size())) == scheme;
}

std::optional<FileURL> fileUrlFromUri(std::string_view uri) {
    if (!hasFileScheme(uri)) {
        return std::nullopt;
    }
    uri.remove_prefix(scheme.size());
    if (uri.substr(0, 2) == "//") {
        uri.remove_prefix(2);
        const std::string_view host = uri.substr(0, uri.find('/'));
        if (!isThisMachine(host)) {
            return std::nullopt;
        }
        uri.remove_prefix(host.size());
    }
    if (uri.empty() || uri.front() != '/') {
        return std::nullopt;
    }
    std::string path = percentDecoded(uri);
    if (path.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return FileURL(std::move(path));
}

} // namespace kestrel
