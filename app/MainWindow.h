#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace kestrel {

class ContentView;
class MenuBar;
class WindowBorder;
class ResizeHandle;
class TitleBar;

/// The frameless main window: the content view, the title bar over its top, the border and the
/// resize handles.
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

  protected:
    bool event(QEvent* event) override;
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

  private:
    void layOutChildren();
    void refreshMinimum();
    /// Shows border and resize handles only while floating, and updates the maximise button.
    void refreshState();
    /// Requests to enlarge a window below its minimum size, once for each such size.
    void enforceMinimumSize();
    /// Whether the window is neither maximised nor full-screen.
    bool isFloating() const;
    void toggleMaximised();
    void renderIcon();

    ContentView* contents_;
    TitleBar* titleBar_;
    WindowBorder* border_;
    std::vector<ResizeHandle*> resizeHandles_;
    /// The size below the minimum that the last request was for.
    std::optional<QSize> correctedSize_;
};

} // namespace kestrel
