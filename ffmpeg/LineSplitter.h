#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel {

/// Splits a chunked byte stream into lines. LF, CR, CR LF or EOF ends a line. The handler gets it
/// without its terminator, valid during the call.
class LineSplitter {
  public:
    /// Longer lines, in bytes, are dropped: bounded memory for a stream without line ends.
    static constexpr std::size_t maximumLineLength = 65'536;

    using LineHandler = std::function<void(std::string_view)>;

    explicit LineSplitter(LineHandler onLine) : onLine_(std::move(onLine)) {}

    /// Consumes the next chunk and calls the handler for each line that ends in it.
    void feed(std::string_view bytes);

    /// Call at EOF: hands over an unterminated last line.
    void finish();

  private:
    void append(std::string_view piece);
    void endLine();

    LineHandler onLine_;
    std::string line_;
    bool isOverlong_ = false;
    bool isAfterCarriageReturn_ = false;
};

} // namespace kestrel
