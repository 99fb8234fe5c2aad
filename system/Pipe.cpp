#include "Pipe.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

constexpr int firstFreeDescriptor = STDERR_FILENO + 1;
constexpr std::size_t chunkSize = 65'536;

[[noreturn]] void throwErrno(const char* call) {
    throw std::system_error(errno, std::generic_category(), call);
}

FileDescriptor moveAboveStandardStreams(FileDescriptor descriptor) {
    if (descriptor.get() >= firstFreeDescriptor) {
        return descriptor;
    }
    const int moved = ::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, firstFreeDescriptor);
    if (moved < 0) {
        throwErrno("fcntl");
    }
    return FileDescriptor(moved);
}

} // namespace

Pipe Pipe::make() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throwErrno("pipe2");
    }
    FileDescriptor readEnd(ends[0]);
    FileDescriptor writeEnd(ends[1]);
    return {moveAboveStandardStreams(std::move(readEnd)),
            moveAboveStandardStreams(std::move(writeEnd))};
}

void readChunks(const FileDescriptor& source,
                const std::function<void(std::string_view)>& onChunk) {
    std::vector<char> buffer(chunkSize);
    while (true) {
        const ssize_t count = ::read(source.get(), buffer.data(), buffer.size());
        if (count > 0) {
            onChunk({buffer.data(), static_cast<std::size_t>(count)});
        } else if (count == 0) {
            return;
        } else if (errno != EINTR) {
            throwErrno("read");
        }
    }
}

std::string readToEnd(FileDescriptor source) {
    std::string bytes;
    readChunks(source, [&bytes](std::string_view chunk) { bytes += chunk; });
    return bytes;
}

} // namespace kestrel
