#include "Alert.h"

#include "AppBadge.h"
#include "ApplicationFont.h"
#include "Button.h"
#include "ContinuousRectangle.h"
#include "Label.h"
#include "ThemeColor.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

namespace kestrel {
namespace {

constexpr QMargins padding(24, 24, 24, 20);
constexpr double cornerRadius = 12;
constexpr int minButtonLabelWidth = 56;

/// Centres a rectangle over a window, but keeps it on the screen.
QPoint placeOver(const QRect& window, QSize size, const QRect& screen) {
    const QPoint middle = window.center() - QPoint(size.width() / 2, size.height() / 2);
    const QPoint last = screen.bottomRight() - QPoint(size.width(), size.height());
    return {std::max(screen.left(), std::min(middle.x(), last.x())),
            std::max(screen.top(), std::min(middle.y(), last.y()))};
}

} // namespace

Alert::Alert(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), message_(new Label({}, {}, this)) {
    setWindowTitle(tr("Kestrel"));
    // In Qt 6.4 only an application-modal dialog regains the keyboard focus when the blocked window
    // is clicked; in Qt 6.8 and 6.11 a window-modal one does too.
    setWindowModality(Qt::ApplicationModal);

    auto* headline = new Label(tr("Kestrel"), {TextStyle::title3, QFont::Bold}, this);
    headline->setObjectName(QStringLiteral("alertHeadline"));
    message_->setObjectName(QStringLiteral("alertMessage"));
    auto* ok = new Button(Button::Variant::prominent, tr("OK"), this);
    ok->setMinimumLabelWidth(minButtonLabelWidth);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::reject);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(6);
    texts->addStretch(1);
    texts->addWidget(headline);
    texts->addWidget(message_);
    texts->addStretch(1);
    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(new AppBadge(this), 0, Qt::AlignTop);
    top->addLayout(texts);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(padding);
    column->setSpacing(20);
    column->addLayout(top);
    column->addWidget(ok, 0, Qt::AlignRight);
    column->setSizeConstraint(QLayout::SetFixedSize);
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            &Alert::refreshMessageWidth);
}

QString Alert::message() const {
    return message_->text();
}

void Alert::setMessage(const QString& message) {
    message_->setText(message);
    refreshMessageWidth();
}

void Alert::refreshMessageWidth() {
    constexpr int charactersPerLine = 44;
    const int longest = charactersPerLine * message_->fontMetrics().averageCharWidth();
    const int shortest = longest / 2;
    message_->setFixedWidth(std::clamp(message_->sizeHint().width(), shortest,
                                       std::max(longest, message_->minimumSizeHint().width())));
}

void Alert::setVisible(bool isVisible) {
    if (isVisible && isHidden()) {
        // Before the native window exists. QDialog would move it while it is mapped; a frameless
        // window in Qt 6.4 then takes its position for (0, 0) if X11 is slow.
        adjustSize();
        const QWidget* window = parentWidget()->window();
        move(placeOver(window->frameGeometry(), size(), window->screen()->availableGeometry()));
    }
    QDialog::setVisible(isVisible);
}

void Alert::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    QAccessibleEvent announcement(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&announcement);
}

void Alert::mousePressEvent(QMouseEvent* event) {
    // There is no caption to drag the alert by.
    if (event->button() == Qt::LeftButton) {
        windowHandle()->startSystemMove();
    }
}

void Alert::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(separatorColor(palette()));
    painter.setBrush(palette().window());
    const QRectF outline = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (testAttribute(Qt::WA_TranslucentBackground)) {
        painter.drawPath(continuousRectangle(outline, cornerRadius));
    } else {
        painter.drawRect(outline);
    }
}

} // namespace kestrel
