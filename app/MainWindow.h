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

/// The window: its contents over the whole of it, the strip over their top, and the rim. The window
/// system draws nothing around it.
class MainWindow : public QWidget {
    Q_OBJECT

  public:
    /// `locateBinary` finds `ffmpeg` whenever the sidebar shows whether it is there.
    explicit MainWindow(std::shared_ptr<ConverterViewModel> model,
                        FFmpegService::BinaryLocator locateBinary = FFmpegService::locateBinary);

    /// The menu bar in the strip; empty until it is filled.
    MenuBar& menuBar();

    QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool focusNextPrevChild(bool isNext) override;

    // These ask the window system, which may refuse.
    /// Lets the user move the window with the button that is down.
    virtual void startMove();
    /// Lets the user resize the window by one or two sides with the button that is down.
    virtual void startResize(Qt::Edges edges);
    /// For another size, in points.
    virtual void askForSize(QSize size);

  private:
    /// Gives the parts their places in the window of this size.
    void place();
    void refreshMinimum();
    /// Has border, edges and buttons follow whether the window is floating.
    void refreshState();
    /// Asks for the minimum, once for each size below it that the window is given.
    void enforceMinimumSize();
    /// Whether the window is neither maximised nor full-screen.
    bool isFloating() const;
    void toggleMaximised();
    void renderIcon();

    ContentView* contents_;
    TitleBar* titleBar_;
    WindowBorder* border_;
    std::vector<ResizeHandle*> edges_;
    /// A size below the minimum that the window has had since it last asked for more.
    std::optional<QSize> refused_;
};

} // namespace kestrel
