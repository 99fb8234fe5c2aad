#include "AccessibleJobs.h"

#include "Button.h"
#include "JobRow.h"
#include "JobScrollArea.h"

#include <QAccessibleWidget>
#include <QKeySequence>

#include <algorithm>
#include <vector>

namespace kestrel {
namespace {

class AccessibleJobList : public QAccessibleWidget {
  public:
    explicit AccessibleJobList(QWidget* viewport)
        : QAccessibleWidget(viewport, QAccessible::List) {}

    int childCount() const override { return static_cast<int>(rows().size()); }

    QAccessibleInterface* child(int index) const override {
        const std::vector<JobRow*> all = rows();
        const auto position = static_cast<std::size_t>(index);
        return index >= 0 && position < all.size()
                   ? QAccessible::queryAccessibleInterface(all[position])
                   : nullptr;
    }

    int indexOfChild(const QAccessibleInterface* child) const override {
        const std::vector<JobRow*> all = rows();
        const auto found =
            child != nullptr ? std::find(all.begin(), all.end(), child->object()) : all.end();
        return found != all.end() ? static_cast<int>(found - all.begin()) : -1;
    }

    QAccessibleInterface* childAt(int x, int y) const override {
        for (JobRow* row : rows()) {
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(row);
            if (accessible != nullptr && accessible->rect().contains(x, y)) {
                return accessible;
            }
        }
        return nullptr;
    }

  private:
    std::vector<JobRow*> rows() const {
        // A list that is being destroyed is no longer one while its viewport still is there.
        const auto* area = qobject_cast<const JobScrollArea*>(widget()->parentWidget());
        return area != nullptr ? area->rows() : std::vector<JobRow*>();
    }
};

/// Offers to remove the job as long as its row has the button for that.
class AccessibleJobRow : public QAccessibleWidget {
  public:
    explicit AccessibleJobRow(JobRow& row)
        : QAccessibleWidget(&row, QAccessible::ListItem), row_(row) {}

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (row_.isRemovable()) {
            names.prepend(pressAction());
        }
        return names;
    }

    QString localizedActionName(const QString& action) const override {
        return action == pressAction() ? JobRow::tr("Remove")
                                       : QAccessibleWidget::localizedActionName(action);
    }

    QString localizedActionDescription(const QString& action) const override {
        return action == pressAction() ? JobRow::tr("Remove")
                                       : QAccessibleWidget::localizedActionDescription(action);
    }

    void doAction(const QString& action) override {
        if (action != pressAction()) {
            QAccessibleWidget::doAction(action);
        } else if (row_.isRemovable()) {
            row_.removeButton()->click();
        }
    }

    QStringList keyBindingsForAction(const QString& action) const override {
        return action == pressAction() ? QStringList{QKeySequence(Qt::Key_Delete).toString()}
                                       : QAccessibleWidget::keyBindingsForAction(action);
    }

  private:
    JobRow& row_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* row = qobject_cast<JobRow*>(object)) {
        return new AccessibleJobRow(*row);
    }
    auto* widget = qobject_cast<QWidget*>(object);
    const auto* area =
        widget != nullptr ? qobject_cast<const JobScrollArea*>(widget->parentWidget()) : nullptr;
    return area != nullptr && area->viewport() == widget ? new AccessibleJobList(widget) : nullptr;
}

} // namespace

void installAccessibleJobs() {
    QAccessible::installFactory(makeInterface);
}

} // namespace kestrel
