#pragma once

#include "ContentView.h"
#include "FFmpegService.h"
#include "RunUntil.h"
#include "Scenario.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <gtest/gtest.h>

#include <string>

namespace kestrel {

/// Sets the desktop's `org.a11y.Status.IsEnabled`, as its accessibility settings do.
inline void setScreenReaderEnabled(bool isEnabled) {
    QDBusMessage set = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
        << QVariant::fromValue(QDBusVariant(isEnabled));
    EXPECT_EQ(QDBusConnection::sessionBus().call(set).type(), QDBusMessage::ReplyMessage);
}

/// The window while assistive technology is active.
class AccessibilityFixture : public ::testing::Test {
  public:
    AccessibilityFixture(const AccessibilityFixture&) = delete;
    AccessibilityFixture& operator=(const AccessibilityFixture&) = delete;

  protected:
    AccessibilityFixture() : view_(scenario_.model, FFmpegService::locateBinary) {
        view_.resize(960, 640);
        EXPECT_TRUE(showActive(view_));
        setScreenReaderEnabled(true);
        EXPECT_TRUE(test::runUntil([] { return QAccessible::isActive(); }));
    }

    ~AccessibilityFixture() override { setScreenReaderEnabled(false); }

    static QAccessibleInterface* interfaceOf(QObject* object) {
        return QAccessible::queryAccessibleInterface(object);
    }

    static std::string text(QObject* object, QAccessible::Text kind = QAccessible::Name) {
        return utf8(interfaceOf(object)->text(kind));
    }

    Scenario scenario_;
    ContentView view_;
};

} // namespace kestrel
