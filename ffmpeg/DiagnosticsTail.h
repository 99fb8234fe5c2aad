#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kestrel {

/// Collects the last 8 non-empty lines of stderr, in whatever chunks it arrives; earlier lines are
/// dropped as soon as later ones are complete. Only LF ends a line; all other characters are kept.
/// Not thread-safe.
class DiagnosticsTail {
  public:
    /// Takes the next bytes of stderr.
    void feed(std::string_view bytes);

    /// Ends the stream. Returns the lines joined by LF without a trailing one, as UTF-8 with
    /// replacement characters for invalid bytes.
    std::string finish();

  private:
    static constexpr std::size_t lineCount = 8;

    void endLine();

    std::string line_;
    /// A ring buffer: line number n is at n modulo its size.
    std::array<std::string, lineCount> lines_;
    std::size_t endedLines_ = 0;
};

} // namespace kestrel
