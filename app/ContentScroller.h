#pragma once

#include <QSize>
#include <QWidget>

class QScrollBar;

namespace kestrel {

/// Scrolls contents that it is too small for: by scroll bars, by the wheel, and to the widget that
/// gets the focus. Where they fit they fill it, and there is no scroll bar.
class ContentScroller : public QWidget {
    Q_OBJECT

  public:
    /// Takes ownership of the contents.
    ContentScroller(QWidget* contents, QWidget* parent);

    /// The size, in device-independent pixels, below which the contents scroll.
    void setMinimumContentsSize(QSize size);

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    QScrollBar* makeBar(Qt::Orientation orientation);
    void layOutContents();
    /// Places a scroll bar for contents that are longer than the viewport; hides it otherwise.
    void updateBar(QScrollBar*& bar, Qt::Orientation orientation);
    void moveContents();
    /// Scrolls by the minimum that makes the widget visible, or its top left if it is too large.
    void reveal(const QWidget& widget);

    /// Clips the contents, which are its child.
    QWidget* viewport_;
    QWidget* contents_;
    QSize minimumContentsSize_;
    // Null until they are needed.
    QScrollBar* horizontalBar_ = nullptr;
    QScrollBar* verticalBar_ = nullptr;
};

} // namespace kestrel
