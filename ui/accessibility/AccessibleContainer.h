#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QObject>

namespace kestrel {

/// Accessible interface of a widget that selects its accessible children. For a child that does not
/// exist, or no longer does, `child` returns null and `indexOfChild` -1.
class AccessibleContainer : public QAccessibleWidget {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    int childCount() const override { return static_cast<int>(parts().size()); }

    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(parts().value(index));
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        return child != nullptr ? static_cast<int>(parts().indexOf(child->object())) : -1;
    }

  protected:
    /// The accessible children, in order. Also called while the widget is being destroyed, when
    /// `qobject_cast` to its own class already returns null.
    virtual QObjectList parts() const = 0;
};

} // namespace kestrel
