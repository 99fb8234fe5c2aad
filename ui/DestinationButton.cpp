#include "DestinationButton.h"

#include "DisplayText.h"
#include "ElidedLabel.h"
#include "Label.h"
#include "SymbolView.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace kestrel {

DestinationButton::DestinationButton(QWidget* parent)
    : Button(Look::plain, {}, parent),
      caption_(new Label(tr("Save to"), {TextStyle::caption}, this)),
      path_(new ElidedLabel(Qt::ElideMiddle, {}, this)) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    caption_->setObjectName(QStringLiteral("destinationCaption"));
    caption_->setInk(Ink::Name::secondary);
    path_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    path_->setObjectName(QStringLiteral("destinationPath"));
    auto* symbol = new SymbolView(Symbol::folderFill, {}, Ink::Name::purple, this);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(caption_);
    texts->addWidget(path_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(symbol);
    row->addLayout(texts, 1);
    for (QWidget* part : {static_cast<QWidget*>(caption_), static_cast<QWidget*>(path_),
                          static_cast<QWidget*>(symbol)}) {
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
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
