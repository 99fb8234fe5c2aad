#include "AccessibilityFixture.h"
#include "Alert.h"
#include "Button.h"
#include "DestinationButton.h"
#include "DropZone.h"
#include "FormatButton.h"
#include "FormatGroup.h"
#include "JobScrollArea.h"
#include "PopUpButton.h"
#include "ProgressBar.h"
#include "QualitySlider.h"
#include "QueueView.h"
#include "SettingsSidebar.h"
#include "SymbolView.h"
#include "UserInputFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {
namespace {

using ::testing::ElementsAre;

class AccessibilityTest : public AccessibilityFixture {
  protected:
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

} // namespace
} // namespace kestrel
