#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QObject>

namespace kestrel {

/// What assistive technology sees of a widget that chooses which objects are its children. A
/// question for one that is not there, or no longer, is answered with none.
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
    /// The children, in order. Also asked of a widget that is being destroyed, which by then is no
    /// longer of its own class.
    virtual QObjectList parts() const = 0;
};

} // namespace kestrel
