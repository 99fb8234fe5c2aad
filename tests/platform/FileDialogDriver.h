#pragma once

#include <QFileDialog>
#include <QModelIndex>
#include <QString>
#include <QStringList>

class QAbstractItemView;
class QPushButton;
class QToolButton;

namespace kestrel::test {

/// Drives an open QFileDialog with user input.
class FileDialogDriver {
  public:
    explicit FileDialogDriver(QFileDialog& dialog) : dialog_(dialog) {}

    /// Waits for the expected number of entries and returns their names, sorted.
    QStringList names(int expectedCount) const;

    void click(const QString& name, Qt::KeyboardModifiers modifiers = {}) const;
    void doubleClick(const QString& name) const;
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;

    /// Presses Tab until the widget has the keyboard focus.
    void tabTo(const QWidget* widget) const;

    /// Clicks the confirm button.
    void confirm() const;

    /// Closes the window.
    void close() const { dialog_.close(); }

    QPushButton* confirmButton() const;
    QToolButton* newFolderButton() const;

    /// The view that shows the folder's entries.
    QAbstractItemView* view() const;

  private:
    /// Waits until the view lists the name.
    QModelIndex item(const QString& name) const;

    QFileDialog& dialog_;
};

} // namespace kestrel::test
