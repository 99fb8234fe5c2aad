#pragma once

#include "FileDescriptor.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstring>
#include <string>
#include <string_view>

namespace kestrel::test {

/// The socket of a bus that takes connections and sends nothing, or only what the test has it send.
class SilentBus {
  public:
    SilentBus()
        : path_(folder_.url().path() + "/bus"), listener_(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        EXPECT_LT(path_.size(), sizeof address.sun_path);
        std::memcpy(address.sun_path, path_.c_str(), path_.size());
        EXPECT_EQ(
            ::bind(listener_.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address),
            0);
        constexpr int backlog = 16;
        EXPECT_EQ(::listen(listener_.get(), backlog), 0);
    }

    std::string address() const { return "unix:path=" + path_; }

    /// Accepts a connection and sends this to it.
    void send(std::string_view bytes) {
        connection_ = FileDescriptor(::accept(listener_.get(), nullptr, nullptr));
        EXPECT_EQ(::send(connection_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
                  static_cast<ssize_t>(bytes.size()));
    }

    /// Ends the accepted connection.
    void hangUp() { connection_.reset(); }

  private:
    TemporaryFolder folder_;
    std::string path_;
    FileDescriptor listener_;
    FileDescriptor connection_;
};

} // namespace kestrel::test
