#include "Alert.h"
#include "Announcement.h"
#include "Button.h"
#include "ContentView.h"
#include "DestinationButton.h"
#include "DropZone.h"
#include "FFmpegService.h"
#include "FormatButton.h"
#include "FormatGroup.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "PopUpButton.h"
#include "ProgressBar.h"
#include "QualitySlider.h"
#include "QueueView.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "SettingsSidebar.h"
#include "SymbolView.h"
#include "UserInputFilter.h"

#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

/// The notifications shown to assistive technology, in order.
std::vector<std::string> notifications;

/// How many of them were hidden before, so that screen readers notice that they are shown.
int hiddenNotifications = 0;

/// The widgets that notifications were shown by, and that got the focus, in order.
std::vector<const QObject*> notifiers;
std::vector<const QObject*> focusedObjects;

void record(QAccessibleEvent* event) {
    if (event->type() == QAccessible::Focus) {
        focusedObjects.push_back(event->object());
    }
    const QAccessibleInterface* interface = event->accessibleInterface();
    if (interface == nullptr || interface->role() != QAccessible::Notification) {
        return;
    }
    if (event->type() == QAccessible::ObjectHide) {
        ++hiddenNotifications;
    } else if (event->type() == QAccessible::ObjectShow) {
        notifications.push_back(utf8(interface->text(QAccessible::Name)));
        notifiers.push_back(event->object());
        EXPECT_EQ(hiddenNotifications, static_cast<int>(notifications.size()));
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
        notifiers.clear();
        focusedObjects.clear();
        hiddenNotifications = 0;
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

    /// As an AT-SPI client does.
    static void press(Button* button) {
        const QString action = button->isCheckable() ? QAccessibleActionInterface::toggleAction()
                                                     : QAccessibleActionInterface::pressAction();
        QAccessibleActionInterface* actions = interfaceOf(button)->actionInterface();
        ASSERT_TRUE(actions->actionNames().contains(action));
        actions->doAction(action);
    }

    Button* formatButton(OutputFormat format) const {
        const auto buttons = view_.findChildren<FormatButton*>();
        return *std::find_if(buttons.begin(), buttons.end(), [format](const FormatButton* button) {
            return button->format() == format;
        });
    }

    Scenario scenario_;
    ContentView view_;
};

TEST_F(AccessibilityTest, exposesTheQualityAsAPercentage) {
    auto* slider = view_.findChild<QualitySlider*>();
    QAccessibleInterface* interface = interfaceOf(slider);
    EXPECT_EQ(interface->role(), QAccessible::Slider);
    EXPECT_EQ(text(slider), "Quality");
    EXPECT_EQ(text(slider, QAccessible::Description), "percent");
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
    settle();
    EXPECT_EQ(scenario_.model->settings().quality, 64.5);
    value->setCurrentValue(7);
    settle();
    EXPECT_EQ(scenario_.model->settings().quality, 30);
}

TEST_F(AccessibilityTest, carriesOutPressesInTheirOrder) {
    scenario_.add({"a.opus"});
    scenario_.chooseDestination("/no-such-folder/Out");
    press(find<Button>(view_, "startButton"));
    press(formatButton(OutputFormat::wav));
    interfaceOf(view_.findChild<QualitySlider*>())->valueInterface()->setCurrentValue(40);
    press(formatButton(OutputFormat::mp3));
    press(formatButton(OutputFormat::aiff));
    ASSERT_TRUE(test::runUntil([this] { return scenario_.runner->calls().size() == 1; }));
    EXPECT_EQ(scenario_.runner->calls().front().settings, ConversionSettings());
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::aiff);
    EXPECT_EQ(scenario_.model->settings().quality, 40);
}

TEST_F(AccessibilityTest, carriesOutNoPressBehindAnAlert) {
    scenario_.model->setAlertMessage("text");
    settle();
    auto* alert = view_.findChild<Alert*>();
    ASSERT_NE(alert, nullptr);
    ASSERT_TRUE(waitUntilShown(*alert));
    press(formatButton(OutputFormat::wav));
    interfaceOf(view_.findChild<QualitySlider*>())->valueInterface()->setCurrentValue(40);
    view_.findChild<PopUpButton*>()->showPopup();
    settle();
    EXPECT_EQ(scenario_.model->settings(), ConversionSettings());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    // The alert's own button is not behind it.
    press(alert->findChild<Button*>());
    settle();
    EXPECT_EQ(scenario_.model->alertMessage(), std::nullopt);
    press(formatButton(OutputFormat::wav));
    settle();
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::wav);
}

TEST_F(AccessibilityTest, carriesOutNoPressBehindAPanelOfAnotherProcess) {
    {
        const UserInputFilter panel;
        press(formatButton(OutputFormat::wav));
        press(find<Button>(view_, "addButton"));
        settle();
    }
    EXPECT_EQ(scenario_.model->settings(), ConversionSettings());
    EXPECT_TRUE(scenario_.panelTitles().empty());
    press(formatButton(OutputFormat::wav));
    settle();
    EXPECT_EQ(scenario_.model->settings().format, OutputFormat::wav);
}

TEST_F(AccessibilityTest, carriesOutNoPressOfAHiddenButton) {
    auto* choose = view_.findChild<DropZone*>()->findChild<Button*>();
    press(choose);
    settle();
    EXPECT_EQ(scenario_.panelTitles().size(), 1U);
    scenario_.add({"a.opus"});
    settle();
    ASSERT_FALSE(choose->isVisible());
    const std::size_t shown = scenario_.panelTitles().size();
    press(choose);
    settle();
    EXPECT_EQ(scenario_.panelTitles().size(), shown);
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

TEST_F(AccessibilityTest, selectsExactlyTheFormatThatIsToggled) {
    for (const OutputFormat format :
         {OutputFormat::aiff, OutputFormat::aiff, OutputFormat::wav, OutputFormat::mp3}) {
        press(formatButton(format));
        settle();
        EXPECT_EQ(scenario_.model->settings().format, format);
        for (const FormatButton* button : view_.findChildren<FormatButton*>()) {
            EXPECT_EQ(button->isChecked(), button->format() == format);
            EXPECT_EQ(button->font().weight() == QFont::DemiBold, button->isChecked());
        }
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

TEST_F(AccessibilityTest, announcesTheEndOfABatchThoughItsOtherFilesWereRemoved) {
    scenario_.runner->setScript("a.opus", [this](const auto&, const auto& report) {
        report(0.5);
        scenario_.gate.pass();
        throw FFmpegError::processFailed("interrupted");
    });
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(0));
    scenario_.model->remove(scenario_.model->jobs()[1]);
    scenario_.model->cancel();
    scenario_.gate.open();
    ASSERT_TRUE(scenario_.finish());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion finished: 0 complete, 1 failed"));
}

TEST_F(AccessibilityTest, announcesABatchThatWasStopped) {
    scenario_.cancelAt("b.opus");
    scenario_.add({"a.opus", "b.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    EXPECT_THAT(notifications,
                ElementsAre("Converting", "Conversion stopped: 1 complete, 0 failed"));
}

TEST_F(AccessibilityTest, announcesFromWidgetsThatAreShownButInNobodysWay) {
    const auto announcements = view_.findChildren<Announcement*>();
    EXPECT_EQ(announcements.size(), 2);
    for (const Announcement* announcement : announcements) {
        EXPECT_TRUE(announcement->isVisible());
        EXPECT_EQ(announcement->size(), QSize(1, 1));
        EXPECT_TRUE(announcement->testAttribute(Qt::WA_TransparentForMouseEvents));
    }
}

// A screen reader that comes to the start after the end still finds both texts.
TEST_F(AccessibilityTest, keepsTheTextOfTheStartBesideThatOfTheOutcome) {
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    ASSERT_EQ(notifiers.size(), 2U);
    EXPECT_EQ(text(const_cast<QObject*>(notifiers[0])), "Converting");
    EXPECT_EQ(text(const_cast<QObject*>(notifiers[1])),
              "Conversion finished: 1 complete, 0 failed");
}

TEST_F(AccessibilityTest, announcesNothingButTheRowWhenTabEntersTheQueue) {
    scenario_.add({"a.opus", "b.opus"});
    findButton<Button>(view_, "Add Audio")->setFocus();
    focusedObjects.clear();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    settle();
    const auto* row = qobject_cast<JobRow*>(QApplication::focusWidget());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(utf8(row->accessibleDescription()), "1 of 2");
    EXPECT_THAT(focusedObjects, ElementsAre(row));
}

TEST_F(AccessibilityTest, announcesTheRowAfterAListThatPassesItTheFocus) {
    scenario_.add({"a.opus"});
    auto* list = view_.findChild<JobScrollArea*>();
    focusedObjects.clear();
    list->setFocus();
    settle();
    EXPECT_THAT(focusedObjects, ElementsAre(list, list->rows().front()));
}

TEST_F(AccessibilityTest, announcesTheFocusLastThoughTabReachesARowThatIsGone) {
    scenario_.add({"a.opus", "b.opus"});
    const auto* list = view_.findChild<JobScrollArea*>();
    JobRow* first = list->rows().front();
    scenario_.model->remove(scenario_.model->jobs().front());
    focusedObjects.clear();
    // Before the list has been refreshed.
    first->setFocus(Qt::TabFocusReason);
    settle();
    const auto* row = qobject_cast<const JobRow*>(QApplication::focusWidget());
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->job().source().lastPathComponent(), "b.opus");
    ASSERT_FALSE(focusedObjects.empty());
    EXPECT_EQ(focusedObjects.back(), row);
}

TEST_F(AccessibilityTest, exposesTheFormatsAsAGroupOfRadioButtonsWithTheirPlaces) {
    EXPECT_EQ(interfaceOf(view_.findChild<FormatGroup*>())->role(), QAccessible::Grouping);
    EXPECT_EQ(text(view_.findChild<FormatGroup*>()), "Output format");
    std::vector<std::string> places;
    for (FormatButton* button : view_.findChildren<FormatButton*>()) {
        EXPECT_EQ(interfaceOf(button)->role(), QAccessible::RadioButton);
        EXPECT_EQ(interfaceOf(button)->state().checked, button->isChecked());
        places.push_back(text(button, QAccessible::Description));
    }
    EXPECT_THAT(places, ElementsAre("1 of 3", "2 of 3", "3 of 3"));
}

TEST_F(AccessibilityTest, describesThePickerByItsChoice) {
    auto* picker = view_.findChild<PopUpButton*>();
    EXPECT_EQ(text(picker, QAccessible::Description), "24-bit");
    ConversionSettings settings = scenario_.model->settings();
    settings.bitDepth = PCMBitDepth::sixteen;
    scenario_.model->setSettings(settings);
    settle();
    EXPECT_EQ(text(picker, QAccessible::Description), "16-bit");
}

TEST_F(AccessibilityTest, readsNoToolTip) {
    scenario_.chooseDestination("/home/ada/Music");
    auto* button = view_.findChild<DestinationButton*>();
    ASSERT_FALSE(button->toolTip().isEmpty());
    EXPECT_EQ(text(button), "Save to /home/ada/Music");
    EXPECT_EQ(text(button, QAccessible::Description), "");
}

TEST_F(AccessibilityTest, namesTheProgressBarsApart) {
    scenario_.holdBack("a.opus", 0.5);
    scenario_.add({"a.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(0));
    settle();
    EXPECT_EQ(text(find<ProgressBar>(view_, "overallProgress")), "Overall progress");
    EXPECT_EQ(text(find<ProgressBar>(view_, "progress")), "Progress of a.opus");
}

// Screen readers would announce a layered pane, and the title of the panel again for the list.
TEST_F(AccessibilityTest, announcesNoContainerBetweenThePanelAndItsList) {
    scenario_.add({"a.opus"});
    const QWidget* list = view_.findChild<JobScrollArea*>()->viewport();
    EXPECT_EQ(utf8(list->accessibleName()), "Files");
    for (QWidget* outer = list->parentWidget(); outer != view_.findChild<QueueView*>();
         outer = outer->parentWidget()) {
        EXPECT_EQ(interfaceOf(outer)->role(), QAccessible::Client);
        EXPECT_EQ(text(outer), "");
    }
}

TEST_F(AccessibilityTest, announcesNothingWhileABatchRuns) {
    scenario_.holdBack("b.opus", 0.5);
    scenario_.add({"a.opus", "b.opus"});
    scenario_.start();
    ASSERT_TRUE(scenario_.waitForProgress(1));
    settle();
    EXPECT_THAT(notifications, ElementsAre("Converting"));
}

TEST_F(AccessibilityTest, groupsSidebarAndQueueAndShowsCheckMarksAsGraphics) {
    EXPECT_EQ(interfaceOf(view_.findChild<SettingsSidebar*>())->role(), QAccessible::Grouping);
    EXPECT_EQ(text(view_.findChild<SettingsSidebar*>()), "Settings");
    EXPECT_EQ(interfaceOf(view_.findChild<QueueView*>())->role(), QAccessible::Grouping);
    EXPECT_EQ(text(view_.findChild<QueueView*>()), "Conversion Queue");
    scenario_.add({"a.opus"});
    ASSERT_TRUE(scenario_.convertAll());
    auto* checkMark = find<SymbolView>(view_, "checkMark");
    EXPECT_EQ(interfaceOf(checkMark)->role(), QAccessible::Graphic);
    EXPECT_EQ(text(checkMark), "Complete");
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
