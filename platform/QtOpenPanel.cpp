#include "QtOpenPanel.h"

#include "FileSystem.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QByteArray>
#include <QFileDialog>
#include <QPointer>
#include <QSettings>
#include <QShortcut>
#include <QStringList>
#include <QToolButton>

#include <string>
#include <utility>

namespace kestrel {

namespace {

using namespace Qt::StringLiterals;

/// QFileDialog of Qt 6.4 to 6.11 always writes its history to the user's QSettings on destruction.
/// A folder below a device file cannot be created, even by root.
void disableSettingsStorage() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, u"/dev/null/settings"_s);
}

/// The name filter for the extensions; QFileDialog matches case-insensitively.
QString nameFilter(const std::vector<std::string>& extensions) {
    QStringList globs;
    for (const std::string& extension : extensions) {
        globs.append(u"*."_s + QString::fromStdString(extension));
    }
    //: Which files a panel offers. Their names' patterns follow in parentheses.
    const QString name = QCoreApplication::translate("kestrel::OpenPanel", "Supported files");
    return name + u" ("_s + globs.join(u' ') + u')';
}

/// Returns the path as text, or none if the text does not convert back to the same bytes.
std::optional<QString> dialogPath(const FileURL& url) {
    const QByteArray bytes = QByteArray::fromStdString(url.path());
    QString text = QString::fromUtf8(bytes);
    return text.toUtf8() == bytes ? std::optional(std::move(text)) : std::nullopt;
}

QString nearestFolder(FileURL folder) {
    while (folder.path() != "/") {
        const std::optional<QString> text = dialogPath(folder);
        if (text && isFolder(folder)) {
            return *text;
        }
        folder = folder.deletingLastPathComponent();
    }
    return u"/"_s;
}

void setUpSelection(QFileDialog& dialog, const OpenPanel::Options& options) {
    if (!options.canChooseDirectories) {
        dialog.setFileMode(options.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                           : QFileDialog::ExistingFile);
        return;
    }
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, !options.canChooseFiles);
    if (options.allowsMultipleSelection) {
        // QFileDialog of Qt 6.4 to 6.11 has no file mode for several folders, but accepts the
        // selection of its views.
        for (auto* view : dialog.findChildren<QAbstractItemView*>()) {
            if (view->objectName() == u"listView"_s || view->objectName() == u"treeView"_s) {
                view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            }
        }
    }
}

/// Allows no file operation, except creating folders if `canCreateDirectories`. Qt 6.4 to 6.11 have
/// one option for all of them (ReadOnly), which hides no control.
void restrictFileOperations(QFileDialog& dialog, bool canCreateDirectories) {
    dialog.setOption(QFileDialog::ReadOnly, !canCreateDirectories);
    if (auto* button = dialog.findChild<QToolButton*>(u"newFolderButton"_s)) {
        button->setVisible(canCreateDirectories);
    }
    if (auto* action = dialog.findChild<QAction*>(u"qt_delete_action"_s)) {
        action->setVisible(false);
    }
    for (auto* shortcut : dialog.findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(QKeySequence::Delete)) {
            shortcut->setEnabled(false);
        }
    }
}

void setUp(QFileDialog& dialog, const OpenPanel::Options& options, const FileURL& startFolder) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    setUpSelection(dialog, options);
    restrictFileOperations(dialog, options.canCreateDirectories);
    if (!options.allowedExtensions.empty()) {
        dialog.setNameFilter(nameFilter(options.allowedExtensions));
    }
    dialog.setWindowTitle(QString::fromStdString(options.title));
    dialog.setLabelText(QFileDialog::Accept,
                        QString::fromStdString(options.prompt).replace(u'&', u"&&"_s));
    dialog.setDirectory(nearestFolder(startFolder));
}

/// Drops paths that do not exist: the name did not survive the conversion to text, or the file has
/// vanished.
std::vector<FileURL> urlsFromDialog(const QStringList& paths) {
    std::vector<FileURL> urls;
    for (const QString& path : paths) {
        if (!path.startsWith(u'/')) {
            continue;
        }
        FileURL url(path.toStdString());
        if (fileExists(url)) {
            urls.push_back(std::move(url));
        }
    }
    return urls;
}

} // namespace

std::optional<std::vector<FileURL>> runQtOpenPanel(const OpenPanel::Options& options,
                                                   const FileURL& startFolder) {
    disableSettingsStorage();
    // Owned by its parent window, which may be destroyed while the dialog is open.
    const QPointer<QFileDialog> dialog = new QFileDialog(QApplication::activeWindow());
    setUp(*dialog, options, startFolder);
    const int result = dialog->exec();
    if (!dialog) {
        return std::nullopt;
    }
    const QStringList paths = dialog->selectedFiles();
    QWidget* owner = dialog->parentWidget();
    delete dialog;
    if (owner != nullptr) {
        // A window manager that learns of the dialog only after it was closed does not return the
        // focus; Qt 6.4 to 6.11 then have no active window.
        owner->activateWindow();
    }
    return result == QDialog::Accepted ? std::optional(urlsFromDialog(paths)) : std::nullopt;
}

} // namespace kestrel
