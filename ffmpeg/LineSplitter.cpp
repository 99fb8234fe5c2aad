#include "LineSplitter.h"

namespace kestrel {

void LineSplitter::feed(std::string_view bytes) {
    while (!bytes.empty()) {
        if (isAfterCarriageReturn_) {
            isAfterCarriageReturn_ = false;
            if (bytes.front() == '\n') {
                bytes.remove_prefix(1);
                continue;
            }
        }
        const std::size_t end = bytes.find_first_of("\r\n");
        append(bytes.substr(0, end));
        if (end == std::string_view::npos) {
            return;
        }
        isAfterCarriageReturn_ = bytes[end] == '\r';
        endLine();
        bytes.remove_prefix(end + 1);
    }
}

void LineSplitter::finish() {
    if (!line_.empty() || isOverlong_) {
        endLine();
    }
}

void LineSplitter::append(std::string_view piece) {
    if (isOverlong_ || line_.size() + piece.size() > maximumLineLength) {
        isOverlong_ = true;
        return;
    }
    line_ += piece;
}

void LineSplitter::endLine() {
    if (!isOverlong_) {
        onLine_(line_);
    }
    line_.clear();
    isOverlong_ = false;
}

} // namespace kestrel
