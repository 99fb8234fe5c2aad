#include "DestinationButton.h"

#include "DisplayText.h"
#include "ElidedLabel.h"

#include <QVBoxLayout>

namespace kestrel {

DestinationButton::DestinationButton(QWidget* parent)
    : QPushButton(parent), path_(new ElidedLabel(Qt::ElideMiddle, this)) {
    setFlat(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* caption = new QLabel(this);
    caption->setTextFormat(Qt::PlainText);
    caption->setText(tr("Save to"));
    path_->setObjectName(QStringLiteral("destinationPath"));
    for (QLabel* label : {caption, static_cast<QLabel*>(path_)}) {
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        column->addWidget(label);
    }
    setDestination(std::nullopt);
}

void DestinationButton::setDestination(const std::optional<FileURL>& destination) {
    const QString shown =
        destination ? displayText(destination->path()) : tr("Choose destination…");
    path_->setText(shown);
    // The labels let the mouse through to the button, which therefore speaks for them.
    setToolTip(destination ? toolTipText(shown) : QString());
    const QString name = tr("Save to %1").arg(destination ? isolated(shown) : shown);
    if (accessibleName() != name) {
        setAccessibleName(name);
    }
}

QSize DestinationButton::sizeHint() const {
    return layout()->sizeHint();
}

QSize DestinationButton::minimumSizeHint() const {
    return layout()->minimumSize();
}

} // namespace kestrel
