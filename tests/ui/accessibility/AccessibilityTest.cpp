#include "ContentView.h"
#include "DropZone.h"
#include "FFmpegService.h"
#include "FormatButton.h"
#include "ProgressBar.h"
#include "QualitySlider.h"
#include "RunUntil.h"
#include "Scenario.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// The notifications shown to assistive technology, in order.
std::vector<std::string> notifications;

void record(QAccessibleEvent* event) {
    if (event->type() != QAccessible::ObjectShow) {
        return;
    }
    const QAccessibleInterface* interface = event->accessibleInterface();
    if (interface != nullptr && interface->role() == QAccessible::Notification) {
        notifications.push_back(utf8(interface->text(QAccessible::Name)));
    }
}

/// Sets the desktop's `org.a11y.Status.IsEnabled`, as its accessibility settings do.
void setScreenReaderEnabled(bool isEnabled) {
    QDBusMessage set = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"));
    set << QStringLiteral("org.a11y.Status") << QStringLiteral("IsEnabled")
        << QVariant::fromValue(QDBusVariant(isEnabled));
    EXPECT_EQ(QDBusConnection::sessionBus().call(set).type(), QDBusMessage::ReplyMessage);
}

class AccessibilityTest : public ::testing::Test {
  public:
    AccessibilityTest(const AccessibilityTest&) = delete;
    AccessibilityTest& operator=(const AccessibilityTest&) = delete;

  protected:
    AccessibilityTest() : view_(scenario_.model, FFmpegService::locateBinary) {
        view_.resize(960, 640);
        EXPECT_TRUE(showActive(view_));
        notifications.clear();
        setScreenReaderEnabled(true);
        EXPECT_TRUE(test::runUntil([] { return QAccessible::isActive(); }));
        QAccessible::installUpdateHandler(record);
    }

    ~AccessibilityTest() override {
        QAccessible::installUpdateHandler(nullptr);
        setScreenReaderEnabled(false);
    }

    static QAccessibleInterface* interfaceOf(QObject* object) {
        return QAccessible::queryAccessibleInterface(object);
    }

    static std::string text(QObject* object, QAccessible::Text kind = QAccessible::Name) {
        return utf8(interfaceOf(object)->text(kind));
    }

    Scenario scenario_;
    ContentView view_;
};

TEST_F(AccessibilityTest, exposesTheQualityAsAPercentage) {
    auto* slider = view_.findChild<QualitySlider*>();
    QAccessibleInterface* interface = interfaceOf(slider);
    EXPECT_EQ(interface->role(), QAccessible::Slider);
    EXPECT_EQ(text(slider), "Quality");
    EXPECT_EQ(text(slider, QAccessible::Value), "82%");
    QAccessibleValueInterface* value = interface->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 82);
    EXPECT_EQ(value->minimumValue().toDouble(), 30);
    EXPECT_EQ(value->maximumValue().toDouble(), 100);
    EXPECT_EQ(value->minimumStepSize().toDouble(), 1);
}

TEST_F(AccessibilityTest, setsTheQualityThroughTheValueInterface) {
    QAccessibleValueInterface* value =
        interfaceOf(view_.findChild<QualitySlider*>())->valueInterface();
    value->setCurrentValue(64.5);
    EXPECT_EQ(scenario_.model->settings().quality, 64.5);
    value->setCurrentValue(7);
    EXPECT_EQ(scenario_.model->settings().quality, 30);
}

TEST_F(AccessibilityTest, describesTheDropZone) {
    auto* zone = view_.findChild<DropZone*>();
    EXPECT_EQ(interfaceOf(zone)->role(), QAccessible::Grouping);
    EXPECT_EQ(text(zone), "Drop zone");
    EXPECT_EQ(text(zone, QAccessible::Description),
              "Drop Opus audio or folders here to queue them.");
}

TEST_F(AccessibilityTest, givesEveryControlANameARoleAStateAndAnAction) {
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    int controls = 0;
    for (QWidget* widget : view_.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() ||
            widget->inherits("QAbstractScrollArea")) {
            continue;
        }
        ++controls;
        const std::string what = widget->metaObject()->className();
        QAccessibleInterface* interface = interfaceOf(widget);
        EXPECT_GT(text(widget).size(), 2U) << what;
        EXPECT_NE(interface->role(), QAccessible::Client) << what;
        EXPECT_TRUE(interface->state().focusable) << what;
        EXPECT_EQ(interface->state().disabled, !widget->isEnabled()) << what;
        const bool canAct = interface->actionInterface() != nullptr &&
                            !interface->actionInterface()->actionNames().isEmpty();
        EXPECT_TRUE(canAct || interface->valueInterface() != nullptr) << what;
    }
    EXPECT_GE(controls, 9);
}

TEST_F(AccessibilityTest, exposesTheSelectedFormatAsChecked) {
    for (FormatButton* button : view_.findChildren<FormatButton*>()) {
        EXPECT_TRUE(interfaceOf(button)->state().checkable);
        EXPECT_EQ(interfaceOf(button)->state().checked, button->format() == OutputFormat::mp3);
    }
}

TEST_F(AccessibilityTest, exposesTheProgressAsAValue) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    auto* bar = find<ProgressBar>(view_, "overallProgress");
    ASSERT_TRUE(test::runUntil([bar] { return bar->value() == 500; }));
    EXPECT_EQ(interfaceOf(bar)->role(), QAccessible::ProgressBar);
    EXPECT_EQ(text(bar), "Overall progress");
    EXPECT_EQ(interfaceOf(bar)->valueInterface()->currentValue().toInt(), 500);
    EXPECT_EQ(interfaceOf(bar)->valueInterface()->maximumValue().toInt(), 1000);
}

TEST_F(AccessibilityTest, announcesTheStartAndTheEndOfABatch) {
    scenario_.failWith("b.opus", "no such stream");
    scenario_.add({"a.opus", "b.opus", "c.opus"});
    EXPECT_THAT(notifications, ElementsAre());
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 2 complete, 1 failed"));
}

TEST_F(AccessibilityTest, announcesTheEndOfABatchThoughFilesWereAddedMeanwhile) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    scenario_.add({"b.opus"});
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 1 complete, 0 failed"));
}

TEST_F(AccessibilityTest, announcesABatchThatWasStopped) {
    scenario_.cancelAt("b.opus");
    scenario_.add({"a.opus", "b.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion stopped: 1 complete, 0 failed"));
}

TEST_F(AccessibilityTest, announcesWithoutTakingTheFocus) {
    scenario_.add({"a.opus"});
    auto* slider = view_.findChild<QualitySlider*>();
    slider->setFocus();
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_TRUE(slider->hasFocus());
}

} // namespace
} // namespace kestrel
