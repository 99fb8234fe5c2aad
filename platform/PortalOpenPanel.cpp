#include "PortalOpenPanel.h"

#include "FileUriConversion.h"
#include "PortalFilter.h"
#include "UserInputFilter.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QStringList>
#include <QUuid>
#include <QWindow>

#include <string>
#include <utility>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

// Functions rather than static objects: QString literals allocate nothing.
QString portalService() {
    return u"org.freedesktop.portal.Desktop"_s;
}

QString portalPath() {
    return u"/org/freedesktop/portal/desktop"_s;
}

QString chooserInterface() {
    return u"org.freedesktop.portal.FileChooser"_s;
}

QString requestInterface() {
    return u"org.freedesktop.portal.Request"_s;
}

/// The first FileChooser version with the "directory" option.
constexpr uint folderVersion = 3;
/// D-Bus activation of the portal may take seconds, but the user is waiting.
constexpr int versionTimeoutMilliseconds = 5000;
/// The reply comes when the request is created, not when the user has chosen.
constexpr int openTimeoutMilliseconds = 25000;
constexpr uint successResponse = 0;
/// For a panel that was closed, and for a backend that cannot be started.
constexpr uint endedResponse = 2;

/// Portal globs are case-sensitive.
QString caseInsensitiveGlob(const std::string& extension) {
    QString glob = u"*."_s;
    for (const QChar c : QString::fromStdString(extension)) {
        if (c.toLower() == c.toUpper()) {
            glob += c;
        } else {
            glob += u'[';
            glob += c.toLower();
            glob += c.toUpper();
            glob += u']';
        }
    }
    return glob;
}

/// The globs for names that are not UTF-8, which GTK matches as it shows them: undecodable bytes
/// replaced by U+FFFD, and a remark in parentheses appended, after one space, none or two in the
/// translations of GLib. A digit in the parentheses would be part of the name itself.
QStringList undecodableNameGlobs(const QString& glob) {
    return {u"*\uFFFD"_s + glob + u"[(\uFF08][!0-9]*[)\uFF09]"_s,
            u"*\uFFFD"_s + glob + u" [ (\uFF08][!0-9]*[)\uFF09]"_s};
}

PortalFilter filterFor(const std::vector<std::string>& extensions) {
    PortalFilter filter;
    //: Which files a panel offers. Their names' patterns follow in parentheses.
    filter.name = QCoreApplication::translate("kestrel::OpenPanel", "Supported files");
    for (const std::string& extension : extensions) {
        const QString glob = caseInsensitiveGlob(extension);
        filter.patterns.append({PortalFilter::Pattern::Glob, glob});
        for (const QString& undecodable : undecodableNameGlobs(glob)) {
            filter.patterns.append({PortalFilter::Pattern::Glob, undecodable});
        }
    }
    return filter;
}

/// Escapes underscores, which mark mnemonics.
QString escapedMnemonics(const std::string& label) {
    return QString::fromStdString(label).replace(u'_', u"__"_s);
}

std::vector<FileURL> urlsFromUris(const QStringList& uris) {
    std::vector<FileURL> urls;
    for (const QString& uri : uris) {
        if (std::optional<FileURL> url = fileUrlFromUri(uri.toStdString())) {
            urls.push_back(std::move(*url));
        }
    }
    return urls;
}

} // namespace

PortalOpenPanel::PortalOpenPanel(QDBusConnection bus, OpenPanel::Options options,
                                 FileURL startFolder)
    : bus_(std::move(bus)), options_(std::move(options)), startFolder_(std::move(startFolder)) {
    registerPortalFilter();
}

PortalOpenPanel::Answer PortalOpenPanel::run() {
    if (!bus_.isConnected()) {
        return {};
    }
    const UserInputFilter filter;
    watchForDisconnect();
    requestVersion();
    loop_.exec();
    if (!answer_) {
        // The event loop was quit: the program is exiting.
        closeRequest();
        return {.isFromPortal = true, .chosen = std::nullopt};
    }
    return *answer_;
}

void PortalOpenPanel::handleResponse(uint response, const QVariantMap& results) {
    if (response == successResponse) {
        finish({true, urlsFromUris(results.value(u"uris"_s).toStringList())});
    } else if (response == endedResponse && hasKeptFocus_) {
        // No panel has appeared, as it would have taken the focus.
        finish({});
    } else {
        // Which code a dismissal has depends on how the panel was closed.
        finish({true, std::nullopt});
    }
}

void PortalOpenPanel::giveUp() {
    closeRequest();
    finish({});
}

void PortalOpenPanel::call(const QDBusMessage& message, int timeoutMilliseconds, Handler handler) {
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(message, timeoutMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, handler = std::move(handler)](QDBusPendingCallWatcher* finished) {
                finished->deleteLater();
                if (!answer_) {
                    handler(*finished);
                }
            });
}

void PortalOpenPanel::watchForDisconnect() {
    auto* watcher = new QDBusServiceWatcher(portalService(), bus_,
                                            QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &PortalOpenPanel::giveUp);
    bus_.connect(QString(), u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s,
                 u"Disconnected"_s, this, SLOT(giveUp()));
}

void PortalOpenPanel::requestVersion() {
    QDBusMessage message = QDBusMessage::createMethodCall(
        portalService(), portalPath(), u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message << chooserInterface() << u"version"_s;
    call(message, versionTimeoutMilliseconds, [this](const QDBusPendingCallWatcher& watcher) {
        const QDBusPendingReply<QDBusVariant> reply = watcher;
        if (reply.isError() ||
            (options_.canChooseDirectories && reply.value().variant().toUInt() < folderVersion)) {
            giveUp();
        } else {
            parent_.identify([this](const QString& parentWindow) {
                if (!answer_) {
                    openFile(parentWindow);
                }
            });
        }
    });
}

void PortalOpenPanel::openFile(const QString& parentWindow) {
    const QString token = u"kestrel"_s + QUuid::createUuid().toString(QUuid::Id128);
    QString sender = bus_.baseService().mid(1).replace(u'.', u'_');
    // Subscribe first: the Response signal may arrive before the method's reply.
    setRequestPath(portalPath() + u"/request/"_s + sender + u'/' + token);
    QDBusMessage message = QDBusMessage::createMethodCall(portalService(), portalPath(),
                                                          chooserInterface(), u"OpenFile"_s);
    message << parentWindow << QString::fromStdString(options_.title) << portalOptions(token);
    watchFocus();
    call(message, openTimeoutMilliseconds, [this](const QDBusPendingCallWatcher& watcher) {
        const QDBusPendingReply<QDBusObjectPath> reply = watcher;
        if (reply.isError()) {
            giveUp();
        } else {
            setRequestPath(reply.value().path());
        }
    });
}

void PortalOpenPanel::watchFocus() {
    hasKeptFocus_ = QGuiApplication::focusWindow() != nullptr;
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
            [this](const QWindow* window) { hasKeptFocus_ = hasKeptFocus_ && window != nullptr; });
}

void PortalOpenPanel::setRequestPath(const QString& path) {
    if (path == requestPath_) {
        return;
    }
    const QString signalName = u"Response"_s;
    if (!requestPath_.isEmpty()) {
        bus_.disconnect(portalService(), requestPath_, requestInterface(), signalName, this,
                        SLOT(handleResponse(uint, QVariantMap)));
    }
    requestPath_ = path;
    bus_.connect(portalService(), requestPath_, requestInterface(), signalName, this,
                 SLOT(handleResponse(uint, QVariantMap)));
}

void PortalOpenPanel::closeRequest() {
    if (requestPath_.isEmpty()) {
        return;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(portalService(), requestPath_,
                                                          requestInterface(), u"Close"_s);
    message.setAutoStartService(false);
    bus_.send(message);
}

void PortalOpenPanel::finish(Answer answer) {
    if (!answer_) {
        answer_ = std::move(answer);
        loop_.quit();
    }
}

QVariantMap PortalOpenPanel::portalOptions(const QString& handleToken) const {
    const std::string& folder = startFolder_.path();
    QVariantMap result = {
        {u"handle_token"_s, handleToken},
        {u"accept_label"_s, escapedMnemonics(options_.prompt)},
        {u"modal"_s, true},
        {u"multiple"_s, options_.allowsMultipleSelection},
        {u"directory"_s, options_.canChooseDirectories},
        // The portal expects the terminating NUL in the byte array.
        {u"current_folder"_s,
         QByteArray(folder.c_str(), static_cast<qsizetype>(folder.size() + 1))},
    };
    if (!options_.allowedExtensions.empty()) {
        const QList<PortalFilter> filters = {filterFor(options_.allowedExtensions)};
        result.insert(u"filters"_s, QVariant::fromValue(filters));
    }
    return result;
}

} // namespace kestrel
