#pragma once

#include "Badge.h"

#include <QPixmap>

namespace kestrel {

/// The program's badge in the header of the sidebar.
class AppBadge : public Badge {
    Q_OBJECT

  public:
    explicit AppBadge(QWidget* parent = nullptr);

    /// Renders the badge, for the alert.
    static QPixmap pixmap(const QPalette& palette, double devicePixelRatio);

    /// Draws the glow around a badge. Most of it lies outside the badge, so the badge's parent
    /// draws it.
    static void drawGlow(QPainter& painter, const QRect& badge, const QPalette& palette);
};

} // namespace kestrel
