#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <optional>
#include <vector>

namespace kestrel::test {

/// A fake desktop portal with a file chooser that the test responds for. Owns its bus name from
/// construction until `vanish` or destruction.
class FakePortal final : public QDBusVirtualObject {
    Q_OBJECT

  public:
    struct Request {
        QString caller;
        /// The object path of the Request.
        QString path;
        QString parentWindow;
        QString title;
        QVariantMap options;
    };

    explicit FakePortal(QDBusConnection bus);
    FakePortal(const FakePortal&) = delete;
    FakePortal& operator=(const FakePortal&) = delete;
    ~FakePortal() override;

    /// None for a portal without a file chooser.
    std::optional<uint> version = 4;
    /// Whether OpenFile succeeds; otherwise the reply is an error.
    bool canOpen = true;
    /// Called before the reply to OpenFile is sent.
    std::function<void(const Request&)> onOpen;
    /// Called when the caller has received the reply.
    std::function<void(const Request&)> onOpened;
    /// If not empty, replaces the request path that the token asks for, as in old portals.
    QString otherRequestPath;

    const std::vector<Request>& requests() const { return requests_; }

    const std::vector<QString>& closedPaths() const { return closedPaths_; }

    void respond(const Request& request, uint response, const QStringList& uris = {});

    /// Releases the bus name, as a portal does that crashes.
    void vanish();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    void answerVersion(const QDBusMessage& message);
    void open(const QDBusMessage& message);
    void awaitDelivery(const Request& request);

    QDBusConnection bus_;
    std::vector<Request> requests_;
    std::vector<QString> closedPaths_;
};

} // namespace kestrel::test
