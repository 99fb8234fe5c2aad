#include "FormatGroup.h"

#include "FormatButton.h"
#include "SectionLabel.h"

#include <QVBoxLayout>

namespace kestrel {

FormatGroup::FormatGroup(const std::function<void(OutputFormat)>& choose, QWidget* parent)
    : QWidget(parent) {
    setAccessibleName(tr("Output format"));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addWidget(new SectionLabel(QStringLiteral("OUTPUT FORMAT"), this));
    for (const OutputFormat format : OutputFormat::allCases) {
        const auto chooseThis = [choose, format] { choose(format); };
        auto* button = new FormatButton(format, chooseThis, this);
        buttons_.push_back(button);
        //: A format's place among all: "1 of 3".
        button->setAccessibleDescription(tr("%1 of %2")
                                             .arg(QString::number(buttons_.size()),
                                                  QString::number(OutputFormat::allCases.size())));
        column->addWidget(button);
    }
}

void FormatGroup::setSelected(OutputFormat format) {
    for (FormatButton* button : buttons_) {
        button->setSelected(button->format() == format);
    }
}

} // namespace kestrel
