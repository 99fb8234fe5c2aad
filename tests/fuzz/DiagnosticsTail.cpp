// DiagnosticsTail: same result as a simple reference implementation, whatever the chunks.

#include "DiagnosticsTail.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Property.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrel {

namespace {

const std::string replacement = "\xEF\xBF\xBD";

/// Returns the bytes of the well-formed UTF-8 sequence at the start, or 0 if there is none.
std::size_t sequenceLength(std::string_view text) {
    const auto isWithin = [text](std::size_t i, unsigned char least, unsigned char most) {
        const auto byte = i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
        return byte >= least && byte <= most;
    };
    const auto isContinued = [&](std::size_t i) { return isWithin(i, 0x80, 0xBF); };
    if (isWithin(0, 0x00, 0x7F)) {
        return 1;
    }
    if (isWithin(0, 0xC2, 0xDF)) {
        return isContinued(1) ? 2 : 0;
    }
    if (isWithin(0, 0xE0, 0xEF)) {
        // Neither overlong nor a surrogate.
        const bool isValid = !(isWithin(0, 0xE0, 0xE0) && isWithin(1, 0x80, 0x9F)) &&
                             !(isWithin(0, 0xED, 0xED) && isWithin(1, 0xA0, 0xBF));
        return isContinued(1) && isContinued(2) && isValid ? 3 : 0;
    }
    if (isWithin(0, 0xF0, 0xF4)) {
        // Neither overlong nor beyond the last code point.
        const bool isValid = !(isWithin(0, 0xF0, 0xF0) && isWithin(1, 0x80, 0x8F)) &&
                             !(isWithin(0, 0xF4, 0xF4) && isWithin(1, 0x90, 0xBF));
        return isContinued(1) && isContinued(2) && isContinued(3) && isValid ? 4 : 0;
    }
    return 0;
}

/// Replaces each byte outside well-formed sequences by a replacement character.
std::string repaired(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = sequenceLength(text);
        result += length == 0 ? replacement : std::string(text.substr(0, length));
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

/// Decodes the whole text, then splits it into lines.
std::string expectedTail(std::string_view bytes) {
    std::vector<std::string> lines(1);
    for (const char c : repaired(bytes)) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    std::erase(lines, std::string());
    std::string tail;
    const std::size_t first = lines.size() > 8 ? lines.size() - 8 : 0;
    for (std::size_t i = first; i < lines.size(); ++i) {
        tail += (i == first ? "" : "\n") + lines[i];
    }
    return tail;
}

std::string diagnosticsTail(std::string_view bytes, std::size_t chunkSize) {
    DiagnosticsTail tail;
    for (std::size_t i = 0; i < bytes.size(); i += chunkSize) {
        tail.feed(bytes.substr(i, chunkSize));
    }
    return tail.finish();
}

/// Collapses runs of replacement characters: how many a truncated sequence becomes is left open.
std::string collapsed(const std::string& text) {
    const std::string two = replacement + replacement;
    std::string result;
    for (const char c : text) {
        result += c;
        if (result.ends_with(two)) {
            result.resize(result.size() - replacement.size());
        }
    }
    return result;
}

} // namespace

} // namespace kestrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrel;
    const std::string_view bytes = FuzzInput(data, size).bytes();
    const std::string tail = diagnosticsTail(bytes, bytes.size() + 1);
    require(diagnosticsTail(bytes, 3) == tail, "the tail does not depend on the chunks");
    const std::string expected = expectedTail(bytes);
    if (repaired(bytes) == bytes) {
        require(tail == expected, "the tail is the last eight lines that are not empty");
    }
    require(collapsed(tail) == collapsed(expected), "the tail is that of the repaired text");
    require(repaired(tail) == tail, "the tail is UTF-8");
    require(std::count(tail.begin(), tail.end(), '\n') < 8, "the tail has at most eight lines");
    require(diagnosticsTail(tail, tail.size() + 1) == tail,
            "the tail of a tail is the tail itself");
    return 0;
}
