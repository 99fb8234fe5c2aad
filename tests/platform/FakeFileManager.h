#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace kestrel::test {

/// A file manager on a bus that records what it is asked to show.
class FakeFileManager final : public QDBusVirtualObject {
    Q_OBJECT

  public:
    enum class Answer { Reply, Error, Refusal, None };

    explicit FakeFileManager(QDBusConnection bus);
    FakeFileManager(const FakeFileManager&) = delete;
    FakeFileManager& operator=(const FakeFileManager&) = delete;
    ~FakeFileManager() override;

    Answer answer = Answer::Reply;

    /// The URIs of each call.
    const std::vector<QStringList>& shown() const { return shown_; }

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    QDBusConnection bus_;
    std::vector<QStringList> shown_;
};

} // namespace kestrel::test
