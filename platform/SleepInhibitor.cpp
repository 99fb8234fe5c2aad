#include "SleepInhibitor.h"

#include <QGuiApplication>
#include <QStringList>

#include <fcntl.h>
#include <systemd/sd-bus.h>

#include <chrono>
#include <cstdint>
#include <string>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

/// The bus may have to start the service first.
constexpr std::chrono::seconds patience{5};

/// KDE's portal may agree there and inhibit only idleness; the power manager is KDE's own.
bool isKdeOnWayland() {
    return QGuiApplication::platformName().startsWith(u"wayland"_s) &&
           qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':').contains(u"KDE"_s);
}

} // namespace

SleepInhibitor::SleepInhibitor(const QString& reason) : reason_(reason.toUtf8()) {
    if (!isKdeOnWayland()) {
        requests_.push(&SleepInhibitor::askPortal);
    }
    requests_.push(&SleepInhibitor::askPowerManager);
    requests_.push(&SleepInhibitor::askLogind);
    requests_.push(&SleepInhibitor::askGnome);
    requests_.push(&SleepInhibitor::askKde);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &SleepInhibitor::askNext);
    askNext();
}

SleepInhibitor::~SleepInhibitor() = default;

void SleepInhibitor::askNext() {
    patience_.stop();
    bus_.reset();
    if (requests_.empty()) {
        return;
    }
    const Request request = requests_.front();
    requests_.pop();
    patience_.start(patience);
    (this->*request)();
}

void SleepInhibitor::askPortal() {
    bus_ = std::make_unique<BusConnection>(BusConnection::Bus::session);
    bus_->subscribe("type='signal',sender='org.freedesktop.portal.Desktop',"
                    "interface='org.freedesktop.portal.Request',member='Response'",
                    [this](sd_bus_message* signal) {
                        constexpr std::uint32_t success = 0;
                        std::uint32_t response = success;
                        sd_bus_message_read(signal, "u", &response);
                        if (response != success) {
                            askNext();
                        }
                    });
    ask({"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
         "org.freedesktop.portal.Inhibit", "Inhibit"},
        [this](sd_bus_message* message) {
            constexpr std::uint32_t suspend = 4;
            const char* noParentWindow = "";
            return sd_bus_message_append(message, "sua{sv}", noParentWindow, suspend, 1, "reason",
                                         "s", reason_.constData());
        });
}

void SleepInhibitor::askPowerManager() {
    // Before logind, which lets a desktop of the same user suspend the machine all the same.
    bus_ = std::make_unique<BusConnection>(BusConnection::Bus::session);
    ask({.service = "org.freedesktop.PowerManagement",
         .path = "/org/freedesktop/PowerManagement/Inhibit",
         .interface = "org.freedesktop.PowerManagement.Inhibit",
         .name = "Inhibit",
         .startsService = false},
        [this](sd_bus_message* message) {
            const std::string name = QCoreApplication::applicationName().toStdString();
            return sd_bus_message_append(message, "ss", name.c_str(), reason_.constData());
        });
}

void SleepInhibitor::askLogind() {
    bus_ = std::make_unique<BusConnection>(BusConnection::Bus::system);
    bus_->call(
        {"org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
         "Inhibit"},
        [this](sd_bus_message* message) {
            const std::string name = QCoreApplication::applicationName().toStdString();
            return sd_bus_message_append(message, "ssss", "sleep:idle", name.c_str(),
                                         reason_.constData(), "block");
        },
        [this](sd_bus_message* reply) {
            int lock = -1;
            if (reply != nullptr && sd_bus_message_read(reply, "h", &lock) >= 0) {
                // The message owns the one in it.
                lock_ = FileDescriptor(::fcntl(lock, F_DUPFD_CLOEXEC, 0));
            }
            if (!lock_) {
                askNext();
                return;
            }
            patience_.stop();
            bus_.reset();
        });
}

void SleepInhibitor::askGnome() {
    bus_ = std::make_unique<BusConnection>(BusConnection::Bus::session);
    ask({.service = "org.gnome.SessionManager",
         .path = "/org/gnome/SessionManager",
         .interface = "org.gnome.SessionManager",
         .name = "Inhibit",
         .startsService = false},
        [this](sd_bus_message* message) {
            constexpr std::uint32_t noWindow = 0;
            constexpr std::uint32_t suspend = 4;
            const std::string id = QGuiApplication::desktopFileName().toStdString();
            return sd_bus_message_append(message, "susu", id.c_str(), noWindow, reason_.constData(),
                                         suspend);
        });
}

void SleepInhibitor::askKde() {
    bus_ = std::make_unique<BusConnection>(BusConnection::Bus::session);
    ask({.service = "org.kde.Solid.PowerManagement.PolicyAgent",
         .path = "/org/kde/Solid/PowerManagement/PolicyAgent",
         .interface = "org.kde.Solid.PowerManagement.PolicyAgent",
         .name = "AddInhibition",
         .startsService = false},
        [this](sd_bus_message* message) {
            constexpr std::uint32_t interruptSession = 1;
            const std::string name = QCoreApplication::applicationName().toStdString();
            return sd_bus_message_append(message, "uss", interruptSession, name.c_str(),
                                         reason_.constData());
        });
}

void SleepInhibitor::ask(const BusConnection::Method& method,
                         const BusConnection::Arguments& arguments) {
    const std::string ownerChanges =
        "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
        "member='NameOwnerChanged',arg0='" +
        std::string(method.service) + "'";
    bus_->subscribe(ownerChanges.c_str(), [this](sd_bus_message* signal) {
        const char* name = nullptr;
        const char* oldOwner = nullptr;
        // Whoever owns the name now knows nothing of the inhibitor.
        if (sd_bus_message_read(signal, "ss", &name, &oldOwner) >= 0 && *oldOwner != '\0') {
            askNext();
        }
    });
    bus_->call(method, arguments, [this](sd_bus_message* reply) {
        if (reply == nullptr) {
            askNext();
        } else {
            patience_.stop();
        }
    });
}

} // namespace kestrel
