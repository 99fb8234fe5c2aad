#pragma once

#include <QProxyStyle>

namespace kestrel {

/// The desktop's style without the icon of the menu bar's extension button. Every QMenuBar requests
/// it, none of the program's shows it, and Qt 6.4 and 6.8 load all image format plugins for it; Qt
/// 6.11 does not.
class ApplicationStyle : public QProxyStyle {
    Q_OBJECT

  public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
};

} // namespace kestrel
