#pragma once

#include <QComboBox>

namespace kestrel {

/// A combo box that pops up on Enter, too, and ignores the wheel.
class PopUpButton : public QComboBox {
    Q_OBJECT

  public:
    explicit PopUpButton(QWidget* parent = nullptr);

    /// Does nothing behind a panel or an alert.
    void showPopup() override;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace kestrel
