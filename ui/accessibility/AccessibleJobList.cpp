#include "AccessibleJobList.h"

#include "AccessibleContainer.h"
#include "Button.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "ProgressBar.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeySequence>
#include <QScrollBar>

namespace kestrel {
namespace {

/// The list with its scroll bar. Replaces Qt's own interface, which in Qt 6.4 to 6.11 crashes when
/// a client that has counted both children queries the second after it was hidden.
class AccessibleJobScrollArea : public AccessibleContainer {
  public:
    explicit AccessibleJobScrollArea(JobScrollArea* area)
        : AccessibleContainer(area, QAccessible::Client) {}

  protected:
    QObjectList parts() const override {
        const auto* area = qobject_cast<const JobScrollArea*>(widget());
        if (area == nullptr) {
            return {};
        }
        QObjectList parts{area->viewport()};
        // The scroll bar's container widget.
        QWidget* side = area->verticalScrollBar()->parentWidget();
        if (side->isVisible()) {
            parts.push_back(side);
        }
        return parts;
    }
};

/// The rows, in the order of the queue.
class AccessibleJobList : public AccessibleContainer {
  public:
    explicit AccessibleJobList(QWidget* viewport)
        : AccessibleContainer(viewport, QAccessible::List) {}

  protected:
    QObjectList parts() const override {
        QObjectList parts;
        // During destruction the viewport outlives the JobScrollArea part of its parent.
        if (const auto* area = qobject_cast<const JobScrollArea*>(widget()->parentWidget())) {
            for (JobRow* row : area->rows()) {
                parts.push_back(row);
            }
        }
        return parts;
    }
};

/// Offers the press action, which removes the job, iff the row has a remove button. Its texts are
/// its name, and so no children of their own.
class AccessibleJobRow : public AccessibleContainer {
  public:
    explicit AccessibleJobRow(JobRow& row)
        : AccessibleContainer(&row, QAccessible::ListItem), row_(row) {}

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (row_.isRemovable()) {
            names.prepend(pressAction());
        }
        return names;
    }

    QString localizedActionName(const QString& action) const override {
        return action == pressAction() ? removal() : QAccessibleWidget::localizedActionName(action);
    }

    QString localizedActionDescription(const QString& action) const override {
        return action == pressAction() ? removal()
                                       : QAccessibleWidget::localizedActionDescription(action);
    }

    void doAction(const QString& action) override {
        if (action != pressAction()) {
            QAccessibleWidget::doAction(action);
        } else if (row_.isRemovable()) {
            row_.removeButton()->postClick();
        }
    }

    QStringList keyBindingsForAction(const QString& action) const override {
        return action == pressAction() ? QStringList{QKeySequence(Qt::Key_Delete).toString()}
                                       : QAccessibleWidget::keyBindingsForAction(action);
    }

  protected:
    QObjectList parts() const override {
        QObjectList parts;
        for (QObject* child : widget()->children()) {
            const auto* part = qobject_cast<const QWidget*>(child);
            const bool isControl = qobject_cast<const ProgressBar*>(child) != nullptr ||
                                   qobject_cast<const Button*>(child) != nullptr;
            if (isControl && part->isVisible()) {
                parts += child;
            }
        }
        return parts;
    }

  private:
    static QString removal() {
        //: Takes a file out of the queue.
        return QCoreApplication::translate("kestrel::JobRow", "Remove");
    }

    JobRow& row_;
};

QAccessibleInterface* makeJobInterface(const QString&, QObject* object) {
    if (auto* row = qobject_cast<JobRow*>(object)) {
        return new AccessibleJobRow(*row);
    }
    if (auto* area = qobject_cast<JobScrollArea*>(object)) {
        return new AccessibleJobScrollArea(area);
    }
    auto* widget = qobject_cast<QWidget*>(object);
    const auto* area =
        widget != nullptr ? qobject_cast<const JobScrollArea*>(widget->parentWidget()) : nullptr;
    return area != nullptr && area->viewport() == widget ? new AccessibleJobList(widget) : nullptr;
}

} // namespace

void installAccessibleJobList() {
    QAccessible::installFactory(makeJobInterface);
}

} // namespace kestrel
