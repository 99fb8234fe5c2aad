#include "FormatButton.h"

#include <QSignalBlocker>

#include <utility>

namespace kestrel {

FormatButton::FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent)
    : QPushButton(parent), format_(format) {
    const std::string_view name = format.rawValue();
    setText(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    setAccessibleName(text());
    setCheckable(true);
    setFixedHeight(36);
    connect(this, &QPushButton::clicked, this, action);
    // Assistive technology switches a checkable button without a click, which is a press all the
    // same.
    connect(this, &QPushButton::toggled, this, std::move(action));
}

void FormatButton::setSelected(bool isSelected) {
    const QSignalBlocker blocker(this);
    setChecked(isSelected);
}

void FormatButton::nextCheckState() {}

} // namespace kestrel
