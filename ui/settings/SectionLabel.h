#pragma once

#include "Label.h"

namespace kestrel {

/// The caption above a section of the sidebar. Shows its text verbatim, which is not translated.
class SectionLabel : public Label {
    Q_OBJECT

  public:
    explicit SectionLabel(const QString& text, QWidget* parent = nullptr);

  protected:
    QFont currentFont() const override;
};

} // namespace kestrel
