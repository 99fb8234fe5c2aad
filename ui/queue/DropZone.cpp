#include "DropZone.h"

#include "Badge.h"
#include "Button.h"
#include "ContinuousRectangle.h"
#include "FileDropTarget.h"
#include "Label.h"
#include "ShapePainting.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QVBoxLayout>

#include <utility>

namespace kestrel {
namespace {

constexpr int zonePadding = 6;
constexpr int outlineInset = 20;
constexpr double outlineRadius = 18;
constexpr double dashLength = 7;
constexpr int zoneSpacing = 8;
/// Between the texts and the outline.
constexpr int textMargin = 24;

Label* makeText(const QString& text, const TextFont& font, QWidget* parent) {
    auto* label = new Label(text, font, parent);
    label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    return label;
}

constexpr int discSize = 112;
constexpr int ringSize = 88;
constexpr int badgeFontSize = 35;

void drawDropBadge(QPainter& painter, const QRect& rect, const QPalette& palette) {
    const ThemeColor purple = ThemeColor::Name::purple;
    QPainterPath disc;
    disc.addEllipse(rect);
    fillShape(painter, disc, purple.withOpacity(0.1).color(palette));

    QRectF box(0, 0, ringSize, ringSize);
    box.moveCenter(QRectF(rect).center());
    QPainterPath ring;
    ring.addEllipse(box.adjusted(0.5, 0.5, -0.5, -0.5));
    strokeShape(painter, ring, QPen(purple.withOpacity(0.25).color(palette), 1));

    drawSymbol(painter, rect, Symbol::arrowDownDocFill, symbolSize(systemFont(badgeFontSize)),
               purple.color(palette));
}

} // namespace

DropZone::DropZone(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    new FileDropTarget(this, model_);
    setAccessibleName(tr("Drop zone"));
    setAccessibleDescription(tr("Drop Opus audio or folders here to queue them."));

    auto* title =
        makeText(tr("Drop Opus audio or folders here"), {TextStyle::title3, QFont::Bold}, this);
    title->setObjectName(QStringLiteral("dropTitle"));
    auto* explanation = makeText(tr("Queue a single track or an entire folder tree."),
                                 {TextStyle::subheadline}, this);
    explanation->setObjectName(QStringLiteral("dropExplanation"));
    explanation->setThemeColor(ThemeColor::Name::secondary);

    auto* badge = new Badge(discSize, drawDropBadge, this);
    badge->setObjectName(QStringLiteral("dropBadge"));

    const int side = zonePadding + outlineInset + textMargin;
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(side, outlineInset, side, outlineInset);
    column->setSpacing(0);
    column->addStretch(1);
    column->addWidget(badge, 0, Qt::AlignHCenter);
    column->addSpacing(zoneSpacing + 12);
    column->addWidget(title);
    column->addSpacing(zoneSpacing + 2);
    column->addWidget(explanation);
    column->addSpacing(zoneSpacing + 12);
    column->addLayout(makeButtons());
    column->addStretch(1);
}

QBoxLayout* DropZone::makeButtons() {
    auto* chooseAudio = new Button(Button::Variant::bordered, tr("Choose Audio"), this);
    auto* chooseFolder = new Button(Button::Variant::bordered, tr("Choose Folder"), this);
    connect(chooseAudio, &QPushButton::clicked, this, [this] { model_->chooseFiles(); });
    connect(chooseFolder, &QPushButton::clicked, this, [this] { model_->chooseFolder(); });
    setFocusProxy(chooseAudio);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(zoneSpacing);
    buttons->addStretch(1);
    buttons->addWidget(chooseAudio);
    buttons->addWidget(chooseFolder);
    buttons->addStretch(1);
    return buttons;
}

void DropZone::refresh() {
    update();
}

void DropZone::paintEvent(QPaintEvent*) {
    const bool isTargeted = model_->isDropTargeted();
    const int width = isTargeted ? 2 : 1;
    const ThemeColor color = isTargeted ? ThemeColor(ThemeColor::Name::purple)
                                        : ThemeColor(ThemeColor::Name::secondary).withOpacity(0.2);
    QPen pen(color.color(palette()), width, Qt::CustomDashLine, Qt::FlatCap);
    // Dash patterns are in units of the pen width.
    pen.setDashPattern({dashLength / width, dashLength / width});
    const double side = zonePadding + outlineInset + width / 2.0;
    const double top = outlineInset + width / 2.0;
    QPainter painter(this);
    strokeShape(painter,
                continuousRectangle(QRectF(rect()).adjusted(side, top, -side, -top), outlineRadius),
                pen);
}

} // namespace kestrel
