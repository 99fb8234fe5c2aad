#pragma once

#include <QProxyStyle>

namespace kestrel {

/// The desktop's style with the program's highlight colour, so that menus, lists and file panels
/// match the window.
class ApplicationStyle : public QProxyStyle {
    Q_OBJECT

  public:
    /// Installs it on top of the application's style. Requires: the application object exists, no
    /// widget does. Before the application object exists, a QProxyStyle has Qt's "Windows" style as
    /// its base on every desktop.
    static void install();

    using QProxyStyle::QProxyStyle;

    void polish(QPalette& palette) override;
    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    /// Returns no icon for the menu bar's extension button. Every QMenuBar requests it, none of the
    /// program's shows it, and Qt 6.4 and 6.8 load all image format plugins for it; Qt 6.11 does
    /// not.
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override;
};

} // namespace kestrel
