#include "TitleBar.h"

#include "CaptionButton.h"
#include "MenuBar.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>

namespace kestrel {
namespace {

/// With the padding of the menu bar's items, aligns their text with the sidebar's contents.
constexpr int leadingMargin = 14;
/// As at the top of the sidebar.
constexpr QColor ownBackground(0x14, 0x1A, 0x29);

} // namespace

TitleBar::TitleBar(QWidget* parent)
    : QWidget(parent),
      menuBar_(new MenuBar(barHeight, this)),
      buttons_{new CaptionButton(CaptionButton::Action::minimise, this),
               new CaptionButton(CaptionButton::Action::maximise, this),
               new CaptionButton(CaptionButton::Action::close, this)} {
    setFixedHeight(barHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addSpacing(leadingMargin);
    row->addWidget(menuBar_);
    row->addStretch(1);
    for (CaptionButton* button : buttons_) {
        row->addWidget(button);
    }
    connect(buttons_[0], &QPushButton::clicked, this, &TitleBar::minimiseRequested);
    connect(buttons_[1], &QPushButton::clicked, this, &TitleBar::maximiseRequested);
    connect(buttons_[2], &QPushButton::clicked, this, &TitleBar::closeRequested);
}

void TitleBar::setOverContents(bool isOverContents) {
    if (isOverContents != isOverContents_) {
        isOverContents_ = isOverContents;
        setPalette(isOverContents ? QPalette() : QPalette(Qt::white, ownBackground));
        update();
    }
}

void TitleBar::setWindowMaximised(bool isMaximised) {
    buttons_[1]->setWindowMaximised(isMaximised);
}

void TitleBar::refreshHover() {
    for (CaptionButton* button : buttons_) {
        button->refreshHover();
    }
}

void TitleBar::paintEvent(QPaintEvent*) {
    if (!isOverContents_) {
        QPainter(this).fillRect(rect(), ownBackground);
    }
}

void TitleBar::mousePressEvent(QMouseEvent* event) {
    pressed_.reset();
    if (event->button() == Qt::LeftButton) {
        pressed_ = event->position().toPoint();
    }
}

void TitleBar::mouseMoveEvent(QMouseEvent* event) {
    // Not before the drag distance: a system move would swallow the second click of a double click.
    if (pressed_ && event->buttons().testFlag(Qt::LeftButton) &&
        (event->position().toPoint() - *pressed_).manhattanLength() >=
            QApplication::startDragDistance()) {
        pressed_.reset();
        Q_EMIT moveRequested();
    }
}

void TitleBar::mouseReleaseEvent(QMouseEvent*) {
    pressed_.reset();
}

void TitleBar::mouseDoubleClickEvent(QMouseEvent* event) {
    pressed_.reset();
    if (event->button() == Qt::LeftButton) {
        Q_EMIT maximiseRequested();
    }
}

} // namespace kestrel
