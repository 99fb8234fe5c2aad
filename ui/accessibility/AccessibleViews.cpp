#include "AccessibleViews.h"

#include "AccessibleJobList.h"
#include "Alert.h"
#include "BatchAnnouncer.h"
#include "DropZone.h"
#include "PercentLabel.h"
#include "QualitySlider.h"
#include "QueueView.h"
#include "SettingsSidebar.h"
#include "SymbolView.h"

#include <QAccessible>
#include <QAccessibleWidget>

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
        slider_->chooseQuality(value.toDouble());
    }

    QVariant maximumValue() const override { return QualitySlider::highest; }

    QVariant minimumValue() const override { return QualitySlider::lowest; }

    QVariant minimumStepSize() const override { return 1.0; }

  private:
    QualitySlider* slider_;
};

QAccessibleInterface* makeViewInterface(const QString&, QObject* object) {
    if (auto* slider = qobject_cast<QualitySlider*>(object)) {
        return new AccessibleQualitySlider(slider);
    }
    if (auto* alert = qobject_cast<Alert*>(object)) {
        return new QAccessibleWidget(alert, QAccessible::AlertMessage);
    }
    if (auto* announcer = qobject_cast<BatchAnnouncer*>(object)) {
        return new QAccessibleWidget(announcer, QAccessible::Notification);
    }
    if (auto* symbol = qobject_cast<SymbolView*>(object)) {
        return new QAccessibleWidget(symbol, QAccessible::Graphic);
    }
    if (qobject_cast<DropZone*>(object) != nullptr || qobject_cast<QueueView*>(object) != nullptr ||
        qobject_cast<SettingsSidebar*>(object) != nullptr) {
        return new QAccessibleWidget(qobject_cast<QWidget*>(object), QAccessible::Grouping);
    }
    return nullptr;
}

} // namespace

void installAccessibleViews() {
    QAccessible::installFactory(makeViewInterface);
    installAccessibleJobList();
}

} // namespace kestrel
