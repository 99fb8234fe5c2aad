#include "LauncherProgress.h"

#include <QGuiApplication>

#include <systemd/sd-bus.h>

#include <string>

namespace kestrel {

LauncherProgress::~LauncherProgress() {
    // Where the bus is not ready any more, the end of the connection hides it.
    if (isShown_ && bus_.isReady()) {
        send(0, false);
    }
}

bool LauncherProgress::show(double fraction) {
    if (!bus_.isReady()) {
        return false;
    }
    send(fraction, true);
    isShown_ = true;
    return true;
}

void LauncherProgress::send(double fraction, bool isVisible) {
    const std::string application =
        "application://" + QGuiApplication::desktopFileName().toStdString() + ".desktop";
    bus_.emitSignal("/org/kestrel/Converter", "com.canonical.Unity.LauncherEntry", "Update",
                    [&](sd_bus_message* message) {
                        return sd_bus_message_append(message, "sa{sv}", application.c_str(), 2,
                                                     "progress", "d", fraction, "progress-visible",
                                                     "b", isVisible ? 1 : 0);
                    });
}

} // namespace kestrel
