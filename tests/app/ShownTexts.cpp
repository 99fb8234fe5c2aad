#include "ShownTexts.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QWidget>

#include <utility>

namespace kestrel {
namespace {

class TextCollection {
  public:
    void addWidget(const QWidget& widget) {
        const QString name =
            QLatin1String(widget.metaObject()->className()) + u' ' + widget.objectName();
        add(name, widget.windowTitle());
        add(name, widget.toolTip());
        add(name, widget.statusTip());
        add(name, widget.whatsThis());
        add(name, widget.accessibleName());
        add(name, widget.accessibleDescription());
        if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
            add(name, label->text());
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
            add(name, button->text());
        } else if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
            for (int index = 0; index < box->count(); ++index) {
                add(name, box->itemText(index));
            }
        }
        for (const QAction* action : widget.actions()) {
            add(name, action->text());
            add(name, action->toolTip());
        }
    }

    void addInterface(QAccessibleInterface& interface) {
        const QString name = QStringLiteral("accessible ") + QString::number(interface.role()) +
                             u' ' +
                             (interface.object() != nullptr
                                  ? QLatin1String(interface.object()->metaObject()->className())
                                  : QLatin1String());
        for (const QAccessible::Text kind :
             {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help}) {
            add(name, interface.text(kind));
        }
        auto* actions = interface.actionInterface();
        // The other actions are Qt's.
        const QString press = QAccessibleActionInterface::pressAction();
        if (interface.role() == QAccessible::ListItem && actions != nullptr &&
            actions->actionNames().contains(press)) {
            add(name, actions->localizedActionName(press));
            add(name, actions->localizedActionDescription(press));
        }
        for (int index = 0; index < interface.childCount(); ++index) {
            if (QAccessibleInterface* child = interface.child(index)) {
                addInterface(*child);
            }
        }
    }

    std::vector<ShownText> take() { return std::move(texts_); }

  private:
    void add(const QString& where, const QString& text) {
        if (!text.isEmpty()) {
            texts_.push_back({where, text});
        }
    }

    std::vector<ShownText> texts_;
};

} // namespace

std::vector<ShownText> shownTexts(QWidget& widget) {
    TextCollection texts;
    texts.addWidget(widget);
    for (const QWidget* child : widget.findChildren<QWidget*>()) {
        texts.addWidget(*child);
    }
    if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget)) {
        texts.addInterface(*interface);
    }
    return texts.take();
}

} // namespace kestrel
