#include "Sway.h"

#include "WaitUntil.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <wayland-client-core.h>

#include <string>

namespace kestrel::test {

namespace {

using namespace Qt::StringLiterals;

/// Sway refuses to run as root; root can use the socket of any user.
constexpr unsigned nobody = 65534;

/// Its file is there before it listens.
bool isListening(const std::string& socket) {
    wl_display* display = ::wl_display_connect(socket.c_str());
    if (display != nullptr) {
        ::wl_display_disconnect(display);
    }
    return display != nullptr;
}

bool isRoot() {
    return ::geteuid() == 0;
}

} // namespace

Sway::Sway() {
    const std::string& folder = folder_.url().path();
    folder_.write("config", "xwayland disable\n");
    if (isRoot()) {
        EXPECT_EQ(::chown(folder.c_str(), nobody, nobody), 0);
        process_.setChildProcessModifier([] {
            if (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0) {
                ::_exit(1);
            }
        });
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, QString::fromStdString(folder));
    environment.insert(u"WLR_BACKENDS"_s, u"headless"_s);
    environment.insert(u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s);
    environment.insert(u"WLR_RENDERER"_s, u"pixman"_s);
    process_.setProcessEnvironment(environment);
    process_.start(u"sway"_s, {u"--config"_s, QString::fromStdString(folder + "/config")});
    // The first name that sway tries.
    const std::string socket = folder + "/wayland-1";
    EXPECT_TRUE(waitUntil([&] { return isListening(socket); }))
        << "sway does not start: " << process_.readAllStandardError().toStdString();
    qputenv("WAYLAND_DISPLAY", QByteArray::fromStdString(socket));
    qputenv("QT_QPA_PLATFORM", "wayland");
    // Sway has no keyboard here, without which the Wayland input context of Qt 6.4 crashes.
    qputenv("QT_IM_MODULE", "compose");
}

Sway::~Sway() {
    process_.terminate();
    process_.waitForFinished();
}

} // namespace kestrel::test
