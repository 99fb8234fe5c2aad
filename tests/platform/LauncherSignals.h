#pragma once

#include "BusConnection.h"

#include <systemd/sd-bus.h>

#include <string>
#include <string_view>
#include <vector>

namespace kestrel::test {

/// Listens to the LauncherEntry signals on the session bus, as a task bar does.
class LauncherSignals {
  public:
    struct Update {
        std::string application;
        double progress = -1;
        bool isVisible = false;
    };

    LauncherSignals() {
        bus_.subscribe("type='signal',interface='com.canonical.Unity.LauncherEntry',"
                       "member='Update'",
                       [this](sd_bus_message* signal) { updates.push_back(parsed(signal)); });
    }

    /// Whether the bus knows of the subscription.
    bool isListening() const { return bus_.isReady(); }

    std::vector<Update> updates;

  private:
    static Update parsed(sd_bus_message* signal) {
        Update update;
        const char* text = "";
        sd_bus_message_read(signal, "s", &text);
        update.application = text;
        sd_bus_message_enter_container(signal, 'a', "{sv}");
        while (sd_bus_message_enter_container(signal, 'e', "sv") > 0) {
            sd_bus_message_read(signal, "s", &text);
            if (std::string_view(text) == "progress") {
                sd_bus_message_read(signal, "v", "d", &update.progress);
            } else if (std::string_view(text) == "progress-visible") {
                int isVisible = 0;
                sd_bus_message_read(signal, "v", "b", &isVisible);
                update.isVisible = isVisible != 0;
            }
            sd_bus_message_exit_container(signal);
        }
        return update;
    }

    BusConnection bus_{BusConnection::Bus::session};
};

} // namespace kestrel::test
