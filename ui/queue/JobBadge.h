#pragma once

#include <QWidget>

namespace kestrel {

/// The badge at the start of a row, the same for every job.
class JobBadge : public QWidget {
    Q_OBJECT

  public:
    explicit JobBadge(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace kestrel
