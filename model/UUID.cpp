#include "UUID.h"

#include "FatalError.h"

#include <sys/random.h>

#include <array>

namespace kestrel {

namespace {

/// Random words, drawn from the system many at a time: a call for each would take most of the time
/// that a large folder takes to be queued.
class RandomWords {
  public:
    std::uint64_t next() {
        if (position_ == words_.size()) {
            // Up to 256 bytes the system hands out at once, whatever signals come.
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
