#pragma once

#include <QPoint>
#include <QWidget>

#include <array>
#include <optional>

namespace kestrel {

class CaptionButton;
class MenuBar;

/// The client-side title bar: the menu bar, the caption buttons, and a drag area between them.
class TitleBar : public QWidget {
    Q_OBJECT

  public:
    /// In device-independent pixels.
    static constexpr int barHeight = 28;

    explicit TitleBar(QWidget* parent);

    MenuBar& menuBar() noexcept { return *menuBar_; }

    /// In order: minimise, maximise or restore, close.
    const std::array<CaptionButton*, 3>& buttons() const noexcept { return buttons_; }

    /// Whether the bar is transparent, over contents whose colours it is drawn for; else it has a
    /// dark background of its own.
    void setOverContents(bool isOverContents);

    bool isOverContents() const noexcept { return isOverContents_; }

    /// Switches the second button between "Maximise" and "Restore".
    void setWindowMaximised(bool isMaximised);

    /// Clears the hover state of buttons that have moved from under a still mouse.
    void refreshHover();

  Q_SIGNALS:
    /// The user drags the title bar.
    void moveRequested();
    void minimiseRequested();
    /// Maximise or restore the window.
    void maximiseRequested();
    void closeRequested();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    MenuBar* menuBar_;
    std::array<CaptionButton*, 3> buttons_;
    /// Where the left button was pressed, while that may become a drag.
    std::optional<QPoint> pressed_;
    bool isOverContents_ = true;
};

} // namespace kestrel
