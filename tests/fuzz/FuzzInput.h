#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel {

/// A view of a fuzz input: a text, and the last byte as a parameter of the harness, for example the
/// seed of the chunking. The bytes must outlive it.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t size);

    /// All bytes, including the choice.
    std::string_view bytes() const noexcept { return bytes_; }

    /// All bytes but the choice.
    std::string_view text() const noexcept;

    /// The last byte; 0 if the input is empty.
    std::uint8_t choice() const noexcept;

    /// The text. If the choice is 128 or more, the first two bytes 0xFF each become `length` times
    /// `character`, so that a short input reaches length limits.
    std::string textWithRuns(char character, std::size_t length) const;

  private:
    std::string_view bytes_;
};

} // namespace kestrel
