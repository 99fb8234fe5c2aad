#pragma once

#include <QObject>

namespace kestrel {

/// Singleton that signals changes of the application font; Qt 6.4 to 6.11 notify windows only.
class ApplicationFont : public QObject {
    Q_OBJECT

  public:
    /// Created on first use; owned by the application.
    static ApplicationFont* shared();

  Q_SIGNALS:
    /// Fonts derived from the application font must be recreated.
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;
};

} // namespace kestrel
