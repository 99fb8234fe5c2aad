#include "AccessibleViews.h"

#include "AccessibleJobList.h"
#include "Alert.h"
#include "Announcement.h"
#include "Button.h"
#include "DropZone.h"
#include "FormatGroup.h"
#include "PercentLabel.h"
#include "QualitySlider.h"
#include "QueueView.h"
#include "SettingsSidebar.h"
#include "SymbolView.h"
#include "UserInputFilter.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMetaObject>
#include <QStackedWidget>

namespace kestrel {
namespace {

/// A slider whose accessible value is the quality in percent, not the slider position.
class AccessibleQualitySlider : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit AccessibleQualitySlider(QualitySlider* slider)
        : QAccessibleWidget(slider, QAccessible::Slider), slider_(slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? PercentLabel::wholePercents(slider_->quality())
                                          : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return slider_->quality(); }

    void setCurrentValue(const QVariant& value) override {
        // Posted like the presses of buttons, and so in order with them.
        const auto choose = [slider = slider_, quality = value.toDouble()] {
            if (slider->isVisible() && !isUserInputBlocked(*slider)) {
                slider->chooseQuality(quality);
            }
        };
        QMetaObject::invokeMethod(slider_, choose, Qt::QueuedConnection);
    }

    QVariant maximumValue() const override { return QualitySlider::highest; }

    QVariant minimumValue() const override { return QualitySlider::lowest; }

    QVariant minimumStepSize() const override { return 1.0; }

  private:
    QualitySlider* slider_;
};

/// A button whose press is carried out in the order of the presses. Qt's own interface animates it
/// and clicks 100 ms later (in Qt 6.4), but checks a checkable button at once.
class AccessibleButton : public QAccessibleWidget {
  public:
    explicit AccessibleButton(Button* button) : QAccessibleWidget(button), button_(button) {}

    QAccessible::Role role() const override {
        return button_->isCheckable() ? QAccessible::RadioButton : QAccessible::Button;
    }

    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description) {
            // Not the tool tip, which has markup.
            return button_->accessibleDescription();
        }
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? button_->text() : text;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.pressed = button_->isDown();
        state.checkable = button_->isCheckable();
        state.checked = button_->isChecked();
        state.defaultButton = button_->isDefault();
        return state;
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (button_->isEnabled()) {
            names.prepend(press());
        }
        return names;
    }

    void doAction(const QString& action) override {
        if (action == press()) {
            button_->postClick();
        } else {
            QAccessibleWidget::doAction(action);
        }
    }

  private:
    QString press() const { return button_->isCheckable() ? toggleAction() : pressAction(); }

    Button* button_;
};

QAccessibleInterface* makeViewInterface(const QString&, QObject* object) {
    if (auto* slider = qobject_cast<QualitySlider*>(object)) {
        return new AccessibleQualitySlider(slider);
    }
    if (auto* button = qobject_cast<Button*>(object)) {
        return new AccessibleButton(button);
    }
    if (auto* alert = qobject_cast<Alert*>(object)) {
        return new QAccessibleWidget(alert, QAccessible::AlertMessage);
    }
    if (auto* announcement = qobject_cast<Announcement*>(object)) {
        return new QAccessibleWidget(announcement, QAccessible::Notification);
    }
    if (auto* symbol = qobject_cast<SymbolView*>(object)) {
        return new QAccessibleWidget(symbol, QAccessible::Graphic);
    }
    if (qobject_cast<DropZone*>(object) != nullptr || qobject_cast<QueueView*>(object) != nullptr ||
        qobject_cast<SettingsSidebar*>(object) != nullptr ||
        qobject_cast<FormatGroup*>(object) != nullptr) {
        return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::Grouping);
    }
    auto* stack = qobject_cast<QStackedWidget*>(object);
    if (stack != nullptr && qobject_cast<QueueView*>(stack->parentWidget()) != nullptr) {
        // Qt's own is a layered pane, which screen readers announce.
        return new QAccessibleWidget(stack, QAccessible::Client);
    }
    return nullptr;
}

} // namespace

void installAccessibleViews() {
    QAccessible::installFactory(makeViewInterface);
    installAccessibleJobList();
}

} // namespace kestrel
