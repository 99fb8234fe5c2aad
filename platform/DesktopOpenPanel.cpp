#include "DesktopOpenPanel.h"

#include "FileSystem.h"
#include "PortalOpenPanel.h"
#include "QtOpenPanel.h"

#include <QDir>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QString>

#include <memory>
#include <utility>

namespace kestrel {

DesktopOpenPanel::DesktopOpenPanel(std::function<QDBusConnection()> bus) : bus_(std::move(bus)) {}

std::optional<std::vector<FileURL>> DesktopOpenPanel::runModal(const Options& options) {
    if (isOpen_) {
        return std::nullopt;
    }
    const QScopedValueRollback<bool> guard(isOpen_, true);
    std::optional<std::vector<FileURL>> chosen = ask(options);
    if (chosen && !chosen->empty()) {
        lastFolder_ = chosen->front().deletingLastPathComponent();
    }
    return chosen;
}

std::optional<std::vector<FileURL>> DesktopOpenPanel::ask(const Options& options) const {
    const FileURL folder = startFolder();
    PortalOpenPanel::Answer answer = PortalOpenPanel(bus_(), options, folder).run();
    return answer.isFromPortal ? std::move(answer.chosen) : runQtOpenPanel(options, folder);
}

FileURL DesktopOpenPanel::startFolder() const {
    if (lastFolder_ && isFolder(*lastFolder_)) {
        return *lastFolder_;
    }
    for (const QString& path :
         {QStandardPaths::writableLocation(QStandardPaths::MusicLocation), QDir::homePath()}) {
        // Both come from the user's environment, which may hold anything.
        if (path.startsWith(u'/') && isFolder(FileURL(path.toStdString()))) {
            return FileURL(path.toStdString());
        }
    }
    return FileURL("/");
}

std::unique_ptr<OpenPanel> makeDesktopOpenPanel() {
    return std::make_unique<DesktopOpenPanel>(&QDBusConnection::sessionBus);
}

} // namespace kestrel
