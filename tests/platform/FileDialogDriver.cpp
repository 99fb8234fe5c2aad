#include "FileDialogDriver.h"
#include "RunUntil.h"
#include "Timeout.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <stdexcept>

namespace kestrel::test {

QStringList FileDialogDriver::names(int expectedCount) const {
    const QAbstractItemView* shown = view();
    EXPECT_TRUE(
        runUntil([&] { return shown->model()->rowCount(shown->rootIndex()) == expectedCount; }));
    QStringList result;
    for (int row = 0; row < shown->model()->rowCount(shown->rootIndex()); ++row) {
        result.append(shown->model()->index(row, 0, shown->rootIndex()).data().toString());
    }
    result.sort();
    return result;
}

void FileDialogDriver::click(const QString& name, Qt::KeyboardModifiers modifiers) const {
    const QModelIndex index = item(name);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, modifiers,
                      view()->visualRect(index).center());
}

void FileDialogDriver::doubleClick(const QString& name) const {
    const QPoint middle = view()->visualRect(item(name)).center();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, middle);
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, {}, middle);
}

void FileDialogDriver::pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(view(), key, modifiers);
}

void FileDialogDriver::tabTo(const QWidget* widget) const {
    dialog_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog_, timeout));
    constexpr int maximumStops = 50;
    for (int stop = 0; stop < maximumStops && QApplication::focusWidget() != widget; ++stop) {
        QTest::keyClick(&dialog_, Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget(), widget);
}

void FileDialogDriver::confirm() const {
    EXPECT_TRUE(confirmButton()->isEnabled());
    QTest::mouseClick(confirmButton(), Qt::LeftButton);
}

QPushButton* FileDialogDriver::confirmButton() const {
    return dialog_.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open);
}

QToolButton* FileDialogDriver::newFolderButton() const {
    return dialog_.findChild<QToolButton*>(QStringLiteral("newFolderButton"));
}

QAbstractItemView* FileDialogDriver::view() const {
    for (const QString& name : {QStringLiteral("listView"), QStringLiteral("treeView")}) {
        auto* candidate = dialog_.findChild<QAbstractItemView*>(name);
        if (candidate != nullptr && candidate->isVisible()) {
            return candidate;
        }
    }
    throw std::logic_error("the dialog shows no folder");
}

QModelIndex FileDialogDriver::item(const QString& name) const {
    const QAbstractItemView* shown = view();
    QModelIndex found;
    EXPECT_TRUE(runUntil([&] {
        const QModelIndexList matches =
            shown->model()->match(shown->model()->index(0, 0, shown->rootIndex()), Qt::DisplayRole,
                                  name, 1, Qt::MatchExactly | Qt::MatchCaseSensitive);
        found = matches.value(0);
        return found.isValid() && !shown->visualRect(found).isEmpty();
    })) << name.toStdString();
    return found;
}

} // namespace kestrel::test
