#pragma once

#include <QString>
#include <QWidget>

namespace kestrel {

/// A text that screen readers speak when it is announced. Paints nothing and takes no focus.
class Announcement : public QWidget {
    Q_OBJECT

  public:
    explicit Announcement(QWidget* parent = nullptr);

    /// Replaces the last text. A screen reader that is behind would find the new text for both:
    /// texts that may follow each other quickly need an Announcement each.
    void announce(const QString& text);
};

} // namespace kestrel
