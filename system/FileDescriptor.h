#pragma once

#include <unistd.h>

#include <utility>

namespace kestrel {

/// Owns a file descriptor, or none, and closes it on destruction.
class FileDescriptor {
  public:
    FileDescriptor() noexcept = default;

    explicit FileDescriptor(int descriptor) noexcept : descriptor_(descriptor) {}

    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    FileDescriptor(FileDescriptor&& other) noexcept
        : descriptor_(std::exchange(other.descriptor_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            reset();
            descriptor_ = std::exchange(other.descriptor_, -1);
        }
        return *this;
    }

    ~FileDescriptor() { reset(); }

    /// -1 for none.
    int get() const noexcept { return descriptor_; }

    explicit operator bool() const noexcept { return descriptor_ >= 0; }

    void reset() noexcept {
        if (descriptor_ >= 0) {
            // Never retried on EINTR: Linux has released the descriptor even then.
            ::close(std::exchange(descriptor_, -1));
        }
    }

  private:
    int descriptor_ = -1;
};

} // namespace kestrel
