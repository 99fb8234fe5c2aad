#include "ContentScroller.h"

#include "ControlStyle.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace kestrel {
namespace {

/// In device-independent pixels.
constexpr int lineStep = 20;
/// Around a widget that is scrolled to; keeps its focus ring clear of the edge.
constexpr int revealMargin = 8;

/// Returns the value nearest to the current one at which the viewport shows [first, last).
int revealingValue(const QScrollBar& bar, int first, int last) {
    return std::min(first - revealMargin,
                    std::max(bar.value(), last + revealMargin - bar.pageStep()));
}

} // namespace

ContentScroller::ContentScroller(QWidget* contents, QWidget* parent)
    : QWidget(parent), viewport_(new QWidget(this)), contents_(contents) {
    contents->setParent(viewport_);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now != nullptr && contents_->isAncestorOf(now)) {
            reveal(*now);
        }
    });
}

void ContentScroller::setMinimumContentsSize(QSize size) {
    if (size != minimumContentsSize_) {
        minimumContentsSize_ = size;
        layOutContents();
    }
}

void ContentScroller::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LayoutDirectionChange) {
        layOutContents();
    }
    QWidget::changeEvent(event);
}

void ContentScroller::resizeEvent(QResizeEvent*) {
    layOutContents();
}

void ContentScroller::showEvent(QShowEvent*) {
    layOutContents();
}

void ContentScroller::wheelEvent(QWheelEvent* event) {
    const QPoint delta = event->angleDelta();
    QScrollBar* bar = std::abs(delta.x()) > std::abs(delta.y()) ? horizontalBar_ : verticalBar_;
    if (bar != nullptr && bar->isVisible()) {
        QCoreApplication::sendEvent(bar, event);
    } else {
        event->ignore();
    }
}

QScrollBar* ContentScroller::makeBar(Qt::Orientation orientation) {
    auto* bar = new QScrollBar(orientation, this);
    bar->setStyle(ControlStyle::shared());
    // Its style leaves parts transparent.
    bar->setAttribute(Qt::WA_OpaquePaintEvent, false);
    bar->setFocusPolicy(Qt::NoFocus);
    bar->setSingleStep(lineStep);
    connect(bar, &QScrollBar::valueChanged, this, &ContentScroller::moveContents);
    return bar;
}

void ContentScroller::layOutContents() {
    const QSize needed = minimumContentsSize_;
    if (!isVisible()) {
        // The size may still be Qt's default.
        viewport_->resize(size());
        contents_->resize(size().expandedTo(needed));
        return;
    }
    const int thickness =
        ControlStyle::shared()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, nullptr);
    bool isWide = width() < needed.width();
    const bool isHigh = height() - (isWide ? thickness : 0) < needed.height();
    isWide = isWide || width() - (isHigh ? thickness : 0) < needed.width();
    const QRect viewport = rect().adjusted(0, 0, isHigh ? -thickness : 0, isWide ? -thickness : 0);
    viewport_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), viewport));
    contents_->resize(viewport.size().expandedTo(needed));
    updateBar(horizontalBar_, Qt::Horizontal);
    updateBar(verticalBar_, Qt::Vertical);
    moveContents();
}

void ContentScroller::updateBar(QScrollBar*& bar, Qt::Orientation orientation) {
    const bool isHorizontal = orientation == Qt::Horizontal;
    const QSize viewport = viewport_->size();
    const int page = isHorizontal ? viewport.width() : viewport.height();
    const int length = isHorizontal ? contents_->width() : contents_->height();
    if (length <= page) {
        if (bar != nullptr) {
            bar->setRange(0, 0);
            bar->hide();
        }
        return;
    }
    if (bar == nullptr) {
        bar = makeBar(orientation);
    }
    bar->setPageStep(page);
    bar->setRange(0, length - page);
    const QRect place = isHorizontal
                            ? QRect(0, viewport.height(), page, height() - viewport.height())
                            : QRect(viewport.width(), 0, width() - viewport.width(), page);
    bar->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    bar->show();
}

void ContentScroller::moveContents() {
    const auto offset = [](const QScrollBar* bar) { return bar != nullptr ? bar->value() : 0; };
    const QRect place(QPoint(-offset(horizontalBar_), -offset(verticalBar_)), contents_->size());
    contents_->move(QStyle::visualRect(layoutDirection(), viewport_->rect(), place).topLeft());
}

void ContentScroller::reveal(const QWidget& widget) {
    const QRect area = QStyle::visualRect(layoutDirection(), contents_->rect(),
                                          QRect(widget.mapTo(contents_, QPoint()), widget.size()));
    if (horizontalBar_ != nullptr) {
        horizontalBar_->setValue(revealingValue(*horizontalBar_, area.left(), area.right() + 1));
    }
    if (verticalBar_ != nullptr) {
        verticalBar_->setValue(revealingValue(*verticalBar_, area.top(), area.bottom() + 1));
    }
}

} // namespace kestrel
