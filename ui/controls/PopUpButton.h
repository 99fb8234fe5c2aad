#pragma once

#include <QComboBox>

namespace kestrel {

/// Shows the chosen one of a few texts, and all of them in a list that pops up.
class PopUpButton : public QComboBox {
    Q_OBJECT

  public:
    explicit PopUpButton(QWidget* parent = nullptr);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace kestrel
