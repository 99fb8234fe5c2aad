#pragma once

#include <QObject>

namespace kestrel {

/// An event filter that blocks user input to all windows of the program while it lives: keys,
/// shortcuts, mouse, wheel, touch, tablet, drag and drop, closing. Painting and timers continue.
/// Makes a panel of another process modal to this program. Main thread.
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
