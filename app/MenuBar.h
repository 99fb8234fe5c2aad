#pragma once

#include <QMenuBar>

namespace kestrel {

/// A menu bar for a dark ground: white words with nothing behind them but the highlight. As high as
/// it is told and as wide as its items. Its menus look as everywhere on the desktop.
class MenuBar : public QMenuBar {
    Q_OBJECT

  public:
    /// In pixels. The font is the user's own as far as it fits.
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
