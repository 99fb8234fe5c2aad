#include "UUID.h"

#include "FatalError.h"

#include <sys/random.h>

#include <array>

namespace kestrel {

namespace {

/// Buffered getrandom(): one system call per UUID would take most of the time to queue a large
/// folder.
class RandomWords {
  public:
    std::uint64_t next() {
        if (position_ == words_.size()) {
            // Up to 256 bytes, getrandom() neither returns short nor fails with EINTR.
            static_assert(sizeof words_ <= 256);
            if (::getrandom(words_.data(), sizeof words_, 0) != sizeof words_) {
                fatalError("The system has no random numbers");
            }
            position_ = 0;
        }
        return words_[position_++];
    }

  private:
    std::array<std::uint64_t, 32> words_{};
    std::size_t position_ = words_.size();
};

} // namespace

UUID UUID::random() {
    thread_local RandomWords words;
    const std::uint64_t first = words.next();
    return {first, words.next()};
}

} // namespace kestrel
