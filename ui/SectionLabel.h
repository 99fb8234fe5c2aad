#pragma once

#include <QLabel>

namespace kestrel {

/// The caption above a section of the sidebar; shows its text exactly as passed.
class SectionLabel : public QLabel {
    Q_OBJECT

  public:
    explicit SectionLabel(const QString& text, QWidget* parent = nullptr);
};

} // namespace kestrel
