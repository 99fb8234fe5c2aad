#include "DestinationButton.h"

#include "DisplayText.h"
#include "ElidedLabel.h"
#include "Label.h"
#include "Symbol.h"
#include "SymbolView.h"
#include "ThemeColor.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include <initializer_list>

namespace kestrel {

DestinationButton::DestinationButton(QWidget* parent) : Button(Variant::plain, {}, parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    //: Stands above the path of the output folder.
    auto* caption = new Label(tr("Save to"), {TextStyle::caption}, this);
    caption->setObjectName(QStringLiteral("destinationCaption"));
    caption->setThemeColor(ThemeColor::Name::secondary);
    path_ = new ElidedLabel(Qt::ElideMiddle, {}, this);
    path_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    path_->setObjectName(QStringLiteral("destinationPath"));
    auto* symbol = new SymbolView(Symbol::folderFill, {}, ThemeColor::Name::purple, this);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(caption);
    texts->addWidget(path_);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addWidget(symbol);
    row->addLayout(texts);
    for (QWidget* part : std::initializer_list<QWidget*>{caption, path_, symbol}) {
        part->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
    setDestination(std::nullopt);
}

void DestinationButton::setDestination(const std::optional<FileURL>& destination) {
    // Verbatim, in every language.
    const QString shown =
        destination ? displayText(destination->path()) : QStringLiteral("Choose destination…");
    path_->setText(shown);
    // The labels are transparent for mouse events, so the tool tip is the button's.
    setToolTip(destination ? toolTipText(shown) : QString());
    //: The path of the output folder, or "Choose destination…".
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
