#pragma once

#include <QDialog>

namespace kestrel {

class Label;

/// The program's alert: badge, headline, message and an "OK" button. Frameless like the main
/// window; application-modal. Its corners are rounded iff WA_TranslucentBackground is set: without
/// compositing they would be black.
class Alert : public QDialog {
    Q_OBJECT

  public:
    explicit Alert(QWidget* parent);

    QString message() const;

    void setMessage(const QString& message);

    void setVisible(bool isVisible) override;

  protected:
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// Wraps the message at a width that grows with the application font.
    void refreshMessageWidth();

    Label* message_;
};

} // namespace kestrel
