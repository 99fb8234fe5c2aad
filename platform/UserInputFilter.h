#pragma once

#include <QObject>

class QWidget;

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

/// Returns true iff user input does not reach the widget: a `UserInputFilter` lives, or a modal
/// dialog that the widget is not part of is open. For input that comes by other ways than events,
/// such as AT-SPI. Main thread.
bool isUserInputBlocked(const QWidget& widget);

} // namespace kestrel
