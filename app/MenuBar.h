#pragma once

#include <QMenuBar>

namespace kestrel {

/// A menu bar for a dark background: white text, no fill except the highlight. Fixed height, as
/// wide as its items. The menus keep the desktop's style.
class MenuBar : public QMenuBar {
    Q_OBJECT

  public:
    /// `height` in pixels. Uses the user's font, shrunk to fit.
    explicit MenuBar(int height, QWidget* parent = nullptr);

    /// Opens the first menu, as from the keyboard.
    void openFirstMenu();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void refreshFont();
    void drawItem(QPainter& painter, QAction& action) const;

    int height_;
};

} // namespace kestrel
