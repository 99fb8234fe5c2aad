#pragma once

#include "Badge.h"

namespace kestrel {

/// The program's badge, in the header of the sidebar and in the alert.
class AppBadge : public Badge {
    Q_OBJECT

  public:
    explicit AppBadge(QWidget* parent = nullptr);

    /// Draws the glow around a badge. Most of it lies outside the badge, so the badge's parent
    /// draws it.
    static void drawGlow(QPainter& painter, const QRect& badge, const QPalette& palette);
};

} // namespace kestrel
