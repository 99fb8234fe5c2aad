#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"

#include <QMetaObject>
#include <QSize>
#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace kestrel {

class ContentScroller;
class ContentView;
class MenuBar;
class WindowBorder;
class ResizeHandle;
class TitleBar;

/// The frameless main window: the content view, the title bar over its top, the border and the
/// resize handles. A window that is too small for the contents has the title bar above them, and
/// scrolls them.
class MainWindow : public QWidget {
    Q_OBJECT

  public:
    /// `locateBinary` returns ffmpeg's path, or none; called whenever the sidebar shows whether
    /// ffmpeg is installed.
    explicit MainWindow(std::shared_ptr<ConverterViewModel> model,
                        FFmpegService::BinaryLocator locateBinary = FFmpegService::locateBinary);

    /// The title bar's menu bar; empty until it is filled.
    MenuBar& menuBar();

    QSize sizeHint() const override;

    /// Shown for the first time, fills a screen without room for the contents.
    void setVisible(bool isVisible) override;

  protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool focusNextPrevChild(bool isNext) override;

    // Requests to the window system, which may refuse.
    /// Starts an interactive move with the pressed button.
    virtual void startMove();
    /// Starts an interactive resize of one or two edges with the pressed button.
    virtual void startResize(Qt::Edges edges);
    /// In device-independent pixels.
    virtual void requestSize(QSize size);

    /// Returns the size of the screen without panels, as far as the window system tells.
    virtual QSize availableSize() const;

  private:
    void layOutChildren();
    /// Updates the minimum size: that of the contents, or the available one if that is smaller.
    void refreshMinimum(QSize available);
    /// Reduces a window that is larger than a screen without room for the contents.
    void fitScreen();
    void followScreen();
    /// Shows border and resize handles only while floating, and updates the maximise button.
    void refreshState();
    /// Requests to enlarge a window below its minimum size, once for each such size.
    void enforceMinimumSize();
    /// Whether the window is neither maximised nor full-screen.
    bool isFloating() const;
    void toggleMaximised();
    void setIcon();

    ContentView* contents_;
    ContentScroller* scroller_;
    TitleBar* titleBar_;
    WindowBorder* border_;
    std::vector<ResizeHandle*> resizeHandles_;
    /// The size that the contents need, with the title bar over them.
    QSize contentsMinimum_;
    QMetaObject::Connection screenConnection_;
    /// The size below the minimum that the last request was for.
    std::optional<QSize> correctedSize_;
};

} // namespace kestrel
