#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel {

/// What the fuzzer hands over: a text, and its last byte as a choice of the harness's, for example
/// of where the text is cut. Valid as long as the bytes.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t size);

    /// All bytes, the choice among them.
    std::string_view bytes() const noexcept { return bytes_; }

    /// All but the choice.
    std::string_view text() const noexcept;

    /// 0 where there is none.
    std::uint8_t choice() const noexcept;

    /// The text. Where the choice is 128 or more, each of the first two bytes 0xFF is replaced by a
    /// run of the character, so that a short input reaches the limits of long texts.
    std::string textWithRuns(char character, std::size_t length) const;

  private:
    std::string_view bytes_;
};

} // namespace kestrel
