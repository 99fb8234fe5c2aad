#include "FormatButton.h"

#include <utility>

namespace kestrel {

FormatButton::FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent)
    : QPushButton(parent), format_(format) {
    const std::string_view name = format.rawValue();
    setText(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    setAccessibleName(text());
    setCheckable(true);
    setFixedHeight(36);
    connect(this, &QPushButton::clicked, this, std::move(action));
}

void FormatButton::setSelected(bool isSelected) {
    setChecked(isSelected);
}

void FormatButton::nextCheckState() {}

} // namespace kestrel
