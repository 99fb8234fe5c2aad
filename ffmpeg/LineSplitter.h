#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace kestrel {

/// Cuts a stream of bytes into lines, however the bytes are cut into chunks. A line ends with LF,
/// CR or CR LF, or with the stream, and is handed over without its end, valid during the call.
class LineSplitter {
  public:
    /// Longer lines are passed over, so that a stream without line ends takes no memory to speak
    /// of.
    static constexpr std::size_t maximumLineLength = 65'536;

    using LineHandler = std::function<void(std::string_view)>;

    explicit LineSplitter(LineHandler onLine) : onLine_(std::move(onLine)) {}

    /// Hands over the lines that end in these bytes, the next ones of the stream.
    void feed(std::string_view bytes);

    /// The stream has ended: hands over the last line where it lacks its end.
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
