#include "MainWindow.h"

#include "AccessibleContainer.h"
#include "CaptionButton.h"
#include "ContentScroller.h"
#include "ContentView.h"
#include "FirstFrame.h"
#include "MenuBar.h"
#include "ResizeHandle.h"
#include "TitleBar.h"
#include "VectorImage.h"
#include "WindowBorder.h"

#include <QAccessible>
#include <QEvent>
#include <QIcon>
#include <QMetaObject>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace kestrel {
namespace {

constexpr QSize minimumWindowSize(960, 640);

bool fits(QSize inner, QSize outer) {
    return inner.boundedTo(outer) == inner;
}

/// Has the Window role, which assistive technology looks for and Qt 6.4 to 6.11 give no plain
/// QWidget. Border and resize handles are no accessible children.
class AccessibleMainWindow : public AccessibleContainer {
  public:
    explicit AccessibleMainWindow(MainWindow* window)
        : AccessibleContainer(window, QAccessible::Window) {}

  protected:
    QObjectList parts() const override {
        QObjectList parts;
        for (QObject* child : widget()->children()) {
            const auto* part = qobject_cast<const QWidget*>(child);
            const bool isFrame = qobject_cast<const ResizeHandle*>(child) != nullptr ||
                                 qobject_cast<const WindowBorder*>(child) != nullptr;
            if (part != nullptr && !part->isWindow() && !isFrame) {
                parts += child;
            }
        }
        return parts;
    }
};

QAccessibleInterface* accessibleWindow(const QString& type, QObject* object) {
    auto* window = type == QLatin1String(MainWindow::staticMetaObject.className())
                       ? qobject_cast<MainWindow*>(object)
                       : nullptr;
    return window != nullptr ? new AccessibleMainWindow(window) : nullptr;
}

} // namespace

MainWindow::MainWindow(std::shared_ptr<ConverterViewModel> model,
                       FFmpegService::BinaryLocator locateBinary)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      contents_(new ContentView(std::move(model), std::move(locateBinary), this)),
      scroller_(new ContentScroller(contents_, this)),
      titleBar_(new TitleBar(this)),
      border_(new WindowBorder(this)) {
    QAccessible::installFactory(accessibleWindow);
    contents_->setTopInset(TitleBar::barHeight);
    connect(titleBar_, &TitleBar::moveRequested, this, [this] { startMove(); });
    connect(titleBar_, &TitleBar::minimiseRequested, this, &QWidget::showMinimized);
    connect(titleBar_, &TitleBar::maximiseRequested, this, &MainWindow::toggleMaximised);
    connect(titleBar_, &TitleBar::closeRequested, this, &QWidget::close);
    for (const Qt::Edges edges :
         {Qt::Edges(Qt::LeftEdge), Qt::Edges(Qt::TopEdge), Qt::Edges(Qt::RightEdge),
          Qt::Edges(Qt::BottomEdge), Qt::TopEdge | Qt::LeftEdge, Qt::TopEdge | Qt::RightEdge,
          Qt::BottomEdge | Qt::LeftEdge, Qt::BottomEdge | Qt::RightEdge}) {
        resizeHandles_.push_back(new ResizeHandle(edges, this));
        connect(resizeHandles_.back(), &ResizeHandle::resizeRequested, this,
                [this](Qt::Edges pressed) { startResize(pressed); });
    }
    // Qualified, as a constructor bypasses overrides.
    refreshMinimum(MainWindow::availableSize());
    new FirstFrame(*this, [this] { setIcon(); });
}

void MainWindow::setVisible(bool isVisible) {
    if (isVisible && !testAttribute(Qt::WA_Resized)) {
        refreshMinimum(availableSize());
        if (!fits(contentsMinimum_, availableSize())) {
            // Qt would take two thirds of the screen.
            resize(availableSize());
        }
    }
    QWidget::setVisible(isVisible);
}

MenuBar& MainWindow::menuBar() {
    return titleBar_->menuBar();
}

QSize MainWindow::sizeHint() const {
    return contents_->sizeHint().expandedTo(contentsMinimum_);
}

bool MainWindow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        refreshMinimum(availableSize());
    }
    return QWidget::event(event);
}

void MainWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The native window exists now, and with it its screen.
    connect(windowHandle(), &QWindow::screenChanged, this, &MainWindow::followScreen,
            Qt::UniqueConnection);
    // Queued: until the window is shown, its size is Qt's to set.
    QMetaObject::invokeMethod(this, &MainWindow::followScreen, Qt::QueuedConnection);
}

void MainWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) {
        refreshState();
    } else if (event->type() == QEvent::LayoutDirectionChange) {
        layOutChildren();
    }
    QWidget::changeEvent(event);
}

void MainWindow::resizeEvent(QResizeEvent*) {
    layOutChildren();
    // The buttons have moved, the mouse has not: no event updates their hover state.
    titleBar_->refreshHover();
    enforceMinimumSize();
}

bool MainWindow::focusNextPrevChild(bool isNext) {
    // Widgets that the contents have created since are behind the buttons in the tab order.
    const auto& buttons = titleBar_->buttons();
    QWidget* last = previousInFocusChain();
    while (std::find(buttons.begin(), buttons.end(), last) != buttons.end()) {
        last = last->previousInFocusChain();
    }
    for (CaptionButton* button : buttons) {
        setTabOrder(last, button);
        last = button;
    }
    return QWidget::focusNextPrevChild(isNext);
}

void MainWindow::startMove() {
    windowHandle()->startSystemMove();
}

void MainWindow::startResize(Qt::Edges edges) {
    windowHandle()->startSystemResize(edges);
}

void MainWindow::requestSize(QSize size) {
    // Not QWidget::resize, which in Qt 6.4 to 6.11 takes effect before the window system agrees.
    windowHandle()->resize(size);
}

void MainWindow::layOutChildren() {
    const bool isTooSmall = !fits(contentsMinimum_, size());
    const int inset = isTooSmall ? 0 : TitleBar::barHeight;
    contents_->setTopInset(inset);
    titleBar_->setOverContents(!isTooSmall);
    scroller_->setMinimumContentsSize(contentsMinimum_ - QSize(0, TitleBar::barHeight - inset));
    scroller_->setGeometry(rect().adjusted(0, TitleBar::barHeight - inset, 0, 0));
    titleBar_->setGeometry(0, 0, width(), TitleBar::barHeight);
    border_->setGeometry(rect());
    for (ResizeHandle* handle : resizeHandles_) {
        handle->place(size());
    }
}

void MainWindow::refreshMinimum(QSize available) {
    const QSize inset(0, titleBar_->isOverContents() ? 0 : TitleBar::barHeight);
    const QSize needed = minimumWindowSize.expandedTo(contents_->minimumSizeHint() + inset);
    const QSize minimum = needed.boundedTo(available);
    if (needed != contentsMinimum_ || minimum != minimumSize()) {
        contentsMinimum_ = needed;
        setMinimumSize(minimum);
        layOutChildren();
    }
}

void MainWindow::fitScreen() {
    const QSize available = availableSize();
    if (!fits(contentsMinimum_, available) && isFloating() && !fits(size(), available)) {
        requestSize(size().boundedTo(available));
    }
}

void MainWindow::followScreen() {
    disconnect(screenConnection_);
    screenConnection_ = connect(screen(), &QScreen::availableGeometryChanged, this, [this] {
        refreshMinimum(availableSize());
        fitScreen();
    });
    refreshMinimum(availableSize());
    fitScreen();
}

QSize MainWindow::availableSize() const {
    return screen()->availableSize();
}

bool MainWindow::isFloating() const {
    return !windowState().testAnyFlags(Qt::WindowMaximized | Qt::WindowFullScreen);
}

void MainWindow::refreshState() {
    titleBar_->setWindowMaximised(!isFloating());
    border_->setVisible(isFloating());
    for (ResizeHandle* handle : resizeHandles_) {
        handle->setVisible(isFloating());
    }
}

void MainWindow::enforceMinimumSize() {
    if (fits(minimumSize(), size())) {
        correctedSize_.reset();
        return;
    }
    if (!isFloating() || isMinimized() || correctedSize_ == size() || windowHandle() == nullptr) {
        return;
    }
    correctedSize_ = size();
    // After the resize event: the window system handles one size at a time.
    QMetaObject::invokeMethod(
        this, [this] { requestSize(size().expandedTo(minimumSize())); }, Qt::QueuedConnection);
}

void MainWindow::toggleMaximised() {
    if (isFloating()) {
        showMaximized();
    } else {
        showNormal();
    }
}

void MainWindow::setIcon() {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        icon.addPixmap(QPixmap::fromImage(
            vectorImage(QStringLiteral("org.kestrel.Converter"), Rendering::pixels, side)));
    }
    setWindowIcon(icon);
}

} // namespace kestrel
