#pragma once

#include <QFileDialog>
#include <QModelIndex>
#include <QString>
#include <QStringList>

class QAbstractItemView;
class QPushButton;
class QToolButton;

namespace kestrel::test {

/// Uses an open file dialog of Qt the way a user does.
class FileDialogDriver {
  public:
    explicit FileDialogDriver(QFileDialog& dialog) : dialog_(dialog) {}

    /// The names in the list, sorted, once the expected number is there.
    QStringList names(int expectedCount) const;

    void click(const QString& name, Qt::KeyboardModifiers modifiers = {}) const;
    void doubleClick(const QString& name) const;
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;

    /// Presses the tabulator until the widget has the keyboard focus.
    void tabTo(const QWidget* widget) const;

    /// Clicks the confirm button.
    void confirm() const;

    /// Closes it by its window.
    void close() const { dialog_.close(); }

    QPushButton* confirmButton() const;
    QToolButton* newFolderButton() const;

    /// The view that shows the folder's entries.
    QAbstractItemView* view() const;

  private:
    /// Waits until the list has the name.
    QModelIndex item(const QString& name) const;

    QFileDialog& dialog_;
};

} // namespace kestrel::test
