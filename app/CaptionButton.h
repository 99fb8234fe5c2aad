#pragma once

#include "Button.h"

namespace kestrel {

/// One of the three buttons at the end of the title bar.
class CaptionButton : public Button {
    Q_OBJECT

  public:
    enum class Action { minimise, maximise, close };

    CaptionButton(Action action, QWidget* parent);

    /// Switches the maximise button between "Maximise" and "Restore".
    void setWindowMaximised(bool isMaximised);

    QSize sizeHint() const override;

  protected:
    void drawBackground(QPainter& painter) override;
    void drawLabel(QPainter& painter) override;

  private:
    QString title() const;
    void refreshTitle();
    bool isCloseHighlighted() const;

    Action action_;
    bool isWindowMaximised_ = false;
};

} // namespace kestrel
