#include "DropZone.h"

#include "FileDropTarget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPen>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace kestrel {

DropZone::DropZone(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent), model_(std::move(model)) {
    new FileDropTarget(this, model_);

    auto* title = new QLabel(tr("Drop Opus audio or folders here"), this);
    auto* explanation = new QLabel(tr("Queue a single track or an entire folder tree."), this);
    auto* chooseAudio = new QPushButton(tr("Choose Audio"), this);
    auto* chooseFolder = new QPushButton(tr("Choose Folder"), this);
    connect(chooseAudio, &QPushButton::clicked, this, [this] { model_->chooseFiles(); });
    connect(chooseFolder, &QPushButton::clicked, this, [this] { model_->chooseFolder(); });
    setFocusProxy(chooseAudio);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch(1);
    buttons->addWidget(chooseAudio);
    buttons->addWidget(chooseFolder);
    buttons->addStretch(1);

    auto* column = new QVBoxLayout(this);
    column->setSpacing(8);
    column->addStretch(1);
    column->addWidget(title, 0, Qt::AlignHCenter);
    column->addWidget(explanation, 0, Qt::AlignHCenter);
    column->addLayout(buttons);
    column->addStretch(1);
}

void DropZone::refresh() {
    update();
}

void DropZone::paintEvent(QPaintEvent*) {
    const bool isTargeted = model_->isDropTargeted();
    const int width = isTargeted ? 2 : 1;
    QPen pen(palette().color(isTargeted ? QPalette::Highlight : QPalette::Mid), width);
    pen.setDashPattern({7.0 / width, 7.0 / width});
    pen.setCapStyle(Qt::FlatCap);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.drawRoundedRect(QRectF(rect()).adjusted(26, 20, -26, -20), 18, 18);
}

} // namespace kestrel
