#pragma once

#include "DesktopOpenPanel.h"
#include "DialogCatcher.h"
#include "FakePortal.h"
#include "PrivateBus.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace kestrel::test {

using Chosen = std::optional<std::vector<FileURL>>;

/// The portal's responses.
constexpr uint success = 0;
constexpr uint cancelled = 1;
constexpr uint ended = 2;

inline OpenPanel::Options fileOptions() {
    return {.title = "Choose Opus audio to convert",
            .prompt = "Add Audio",
            .allowsMultipleSelection = true,
            .allowedExtensions = {"opus", "mp3"}};
}

inline OpenPanel::Options folderOptions() {
    return {.title = "Choose output folder",
            .prompt = "Choose",
            .canChooseFiles = false,
            .canChooseDirectories = true,
            .canCreateDirectories = true};
}

/// A panel with a fake portal on a private bus.
class PortalOpenPanelFixture : public testing::Test {
  protected:
    /// Runs the panel, with this response of the portal, and returns its result.
    Chosen runAndRespond(uint response, const QStringList& uris = {}) {
        portal_.onOpened = [this, response, uris](const FakePortal::Request& request) {
            portal_.respond(request, response, uris);
        };
        return panel_.runModal(fileOptions());
    }

    PrivateBus bus_;
    FakePortal portal_{bus_.connect()};
    DesktopOpenPanel panel_{[client = bus_.connect()] { return client; }};
    DialogCatcher qtDialogs_;
};

} // namespace kestrel::test
