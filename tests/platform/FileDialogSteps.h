#pragma once

#include "FileDialogDriver.h"

#include <QPushButton>
#include <QTest>

#include <functional>

namespace kestrel::test {

/// One user action in an open file dialog, for parameterised tests.
using FileDialogStep = std::function<void(const FileDialogDriver& driver)>;

inline FileDialogStep click(const char* name, Qt::KeyboardModifiers modifiers = {}) {
    return
        [=](const FileDialogDriver& driver) { driver.click(QString::fromUtf8(name), modifiers); };
}

inline FileDialogStep doubleClick(const char* name) {
    return [=](const FileDialogDriver& driver) { driver.doubleClick(QString::fromUtf8(name)); };
}

inline FileDialogStep press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    return [=](const FileDialogDriver& driver) { driver.pressKey(key, modifiers); };
}

/// Waits until the view lists this many names.
inline FileDialogStep awaitNames(int count) {
    return [=](const FileDialogDriver& driver) { driver.names(count); };
}

inline FileDialogStep confirm() {
    return [](const FileDialogDriver& driver) { driver.confirm(); };
}

inline FileDialogStep confirmByKeyboard() {
    return [](const FileDialogDriver& driver) {
        driver.tabTo(driver.confirmButton());
        QTest::keyClick(driver.confirmButton(), Qt::Key_Space);
    };
}

inline FileDialogStep close() {
    return [](const FileDialogDriver& driver) { driver.close(); };
}

} // namespace kestrel::test
