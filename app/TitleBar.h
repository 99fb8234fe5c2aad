#pragma once

#include <QPoint>
#include <QWidget>

#include <array>
#include <optional>

namespace kestrel {

class CaptionButton;
class MenuBar;

/// What lies over the top of the window: the menu bar, the buttons of the window, and between them
/// room to take hold of it.
class TitleBar : public QWidget {
    Q_OBJECT

  public:
    /// In points.
    static constexpr int barHeight = 28;

    explicit TitleBar(QWidget* parent);

    MenuBar& menuBar() noexcept { return *menuBar_; }

    /// In their order: minimise, maximise or restore, close.
    const std::array<CaptionButton*, 3>& buttons() const noexcept { return buttons_; }

    /// Has the second button restore a maximised window, and maximise any other.
    void setWindowMaximised(bool isMaximised);

    /// Tells each button that the window has taken from under the mouse that the mouse has left it.
    void refreshHover();

  Q_SIGNALS:
    /// The user drags the window.
    void moveRequested();
    void minimiseRequested();
    /// To maximise the window, or to restore it.
    void maximiseRequested();
    void closeRequested();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    MenuBar* menuBar_;
    std::array<CaptionButton*, 3> buttons_;
    /// Where the left button went down, until that becomes something else.
    std::optional<QPoint> pressed_;
};

} // namespace kestrel
