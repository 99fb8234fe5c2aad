#pragma once

#include "FileDescriptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>

#include <cstddef>
#include <vector>

namespace kestrel::test {

/// A fake of one of the services that keep the machine awake; which one is the service's name. Owns
/// the name from construction until `vanish` or destruction.
class FakeInhibitor final : public QDBusVirtualObject {
    Q_OBJECT

  public:
    enum class Answer {
        agree,
        agreeTwice,
        refuse,
        /// A reply of another type.
        nonsense,
        /// None before `answerLate`.
        none,
    };

    /// Takes the name over from another one.
    FakeInhibitor(QDBusConnection bus, QString service);
    FakeInhibitor(const FakeInhibitor&) = delete;
    FakeInhibitor& operator=(const FakeInhibitor&) = delete;
    ~FakeInhibitor() override;

    Answer answer = Answer::agree;

    /// All calls so far.
    const std::vector<QDBusMessage>& calls() const { return calls_; }

    /// Forgets all calls, and all callers that are gone. Returns how many calls there were.
    std::size_t takeCalls();

    /// How many of those that it agreed to have not been given back.
    std::size_t held() const;

    /// Agrees to the last call.
    void answerLate();

    /// Has the portal report this response to the last request.
    void respond(uint response);

    /// Releases the name, as a service does that crashes.
    void vanish();

    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  private:
    bool isOnBus(const QString& caller) const;
    void agree(const QDBusMessage& call);

    QDBusConnection bus_;
    QString service_;
    std::vector<QDBusMessage> calls_;
    std::vector<QString> agreedCallers_;
    /// The ends of pipes whose other ends logind has given away.
    std::vector<FileDescriptor> locks_;
};

} // namespace kestrel::test
