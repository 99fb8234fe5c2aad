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

/// A desktop portal with a file chooser that a test answers for. Owns its name on the bus from its
/// making to its end.
class FakePortal final : public QDBusVirtualObject {
    Q_OBJECT

  public:
    struct Request {
        QString caller;
        /// Where the response is expected.
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
    /// Whether the call of the panel is answered by an error.
    bool canOpen = true;
    /// Called before the panel's call is answered.
    std::function<void(const Request&)> onOpen;
    /// Called when the caller has taken the answer.
    std::function<void(const Request&)> onOpened;
    /// Where requests are instead of at the path that their token asks for, as in old portals.
    QString otherRequestPath;

    const std::vector<Request>& requests() const { return requests_; }

    const std::vector<QString>& closedPaths() const { return closedPaths_; }

    void respond(const Request& request, uint response, const QStringList& uris = {});

    /// Gives up the name, as a portal does that crashes.
    void vanish();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    void answerVersion(const QDBusMessage& message);
    void open(const QDBusMessage& message);
    void awaitTaken(const Request& request);

    QDBusConnection bus_;
    std::vector<Request> requests_;
    std::vector<QString> closedPaths_;
};

} // namespace kestrel::test
