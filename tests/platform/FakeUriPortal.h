#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

/// A fake desktop portal that records what it is asked to open. Owns its bus name while it lives.
class FakeUriPortal final : public QDBusVirtualObject {
    Q_OBJECT

  public:
    struct Request {
        QString method;
        /// What the descriptor names.
        std::string path;
    };

    enum class Answer { Reply, Error, None };

    explicit FakeUriPortal(QDBusConnection bus);
    FakeUriPortal(const FakeUriPortal&) = delete;
    FakeUriPortal& operator=(const FakeUriPortal&) = delete;
    ~FakeUriPortal() override;

    Answer answer = Answer::Reply;
    /// The response to a request that gets a reply; none for a portal that is not finished.
    std::optional<uint> response = 0;

    const std::vector<Request>& requests() const { return requests_; }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    void respond(const QDBusMessage& message, const QString& path);

    QDBusConnection bus_;
    std::vector<Request> requests_;
};

} // namespace kestrel::test
