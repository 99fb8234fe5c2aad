#pragma once

#include <QWidget>

namespace kestrel {

/// The symbol in a disc and a ring, in the middle of the drop zone.
class DropBadge : public QWidget {
    Q_OBJECT

  public:
    explicit DropBadge(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel
