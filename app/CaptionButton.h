#pragma once

#include "Button.h"

namespace kestrel {

/// One of the three buttons of the window itself.
class CaptionButton : public Button {
    Q_OBJECT

  public:
    enum class Action { minimise, maximise, close };

    CaptionButton(Action action, QWidget* parent);

    /// Makes the button that maximises the one that restores, and back.
    void setWindowMaximised(bool isMaximised);

    QSize sizeHint() const override;

  protected:
    void drawBackground(QPainter& painter) override;
    void drawLabel(QPainter& painter) override;

  private:
    QString title() const;
    void refreshTitle();
    bool isAlarming() const;

    Action action_;
    bool isWindowMaximised_ = false;
};

} // namespace kestrel
