#pragma once

#include <QPixmap>
#include <QWidget>

namespace kestrel {

/// The program's mark in the head of the sidebar.
class AppBadge : public QWidget {
    Q_OBJECT

  public:
    explicit AppBadge(QWidget* parent = nullptr);

    /// The badge as a picture.
    static QPixmap pixmap(const QPalette& palette, double devicePixelRatio);

    /// Draws the glow around a badge, most of which lies outside of it, into a widget around it.
    static void drawGlow(QPainter& painter, const QRect& badge, const QPalette& palette);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel
