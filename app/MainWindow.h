#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"
#include "SettingsSidebar.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <vector>

namespace kestrel {

class ContentView;
class MenuBar;
class WindowBorder;
class WindowEdge;
class WindowStrip;

/// The window: its contents over the whole of it, the strip over their top, and the rim. The window
/// system draws nothing around it.
class MainWindow : public QWidget {
    Q_OBJECT

  public:
    /// `locateBinary` finds `ffmpeg` whenever the sidebar shows whether it is there.
    explicit MainWindow(std::shared_ptr<ConverterViewModel> model,
                        SettingsSidebar::BinaryLocator locateBinary = FFmpegService::locateBinary);

    MenuBar& menuBar();

    QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool focusNextPrevChild(bool isNext) override;

    /// Asks the window system for what it does better than the program. It may refuse.
    virtual void startMove();
    virtual void startResize(Qt::Edges edges);
    virtual void askForSize(QSize size);

  private:
    void place();
    void refreshMinimum();
    void refreshState();
    void resist();
    bool isFree() const;
    void toggleMaximised();
    void renderIcon();

    ContentView* contents_;
    WindowStrip* strip_;
    WindowBorder* border_;
    std::vector<WindowEdge*> edges_;
    /// A size below the minimum that the window has had since it last asked for more.
    std::optional<QSize> refused_;
    bool isFirstFrame_ = true;
};

} // namespace kestrel
