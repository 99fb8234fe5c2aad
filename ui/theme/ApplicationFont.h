#pragma once

#include <QObject>

namespace kestrel {

/// Tells of changes of the user's own font, of which Qt 6.4 to 6.11 tell windows only. One for the
/// program.
class ApplicationFont : public QObject {
    Q_OBJECT

  public:
    /// Made at the first call; belongs to the application.
    static ApplicationFont* shared();

  Q_SIGNALS:
    /// Fonts are to be made anew.
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;
};

} // namespace kestrel
