#pragma once

#include <QObject>

namespace kestrel {

/// Makes every window of the program deaf to the user while it lives: keys, shortcuts, mouse,
/// wheel, touch, tablet, drag and drop and closing are swallowed; painting and timers go on. For
/// the time in which a panel of another process is this program's modal panel. Main thread.
class UserInputFilter final : public QObject {
    Q_OBJECT

  public:
    UserInputFilter();
    UserInputFilter(const UserInputFilter&) = delete;
    UserInputFilter& operator=(const UserInputFilter&) = delete;
    ~UserInputFilter() override;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kestrel
