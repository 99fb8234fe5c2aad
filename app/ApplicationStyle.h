#pragma once

#include <QProxyStyle>

namespace kestrel {

/// The desktop's style but for one icon, that of the button which stands for the menus that a menu
/// bar has no room for. Every menu bar asks for it, none of the program's ever shows it, and Qt 6.4
/// and 6.8 would load all their readers of image files for it; Qt 6.11 does not.
class ApplicationStyle : public QProxyStyle {
    Q_OBJECT

  public:
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
};

} // namespace kestrel
