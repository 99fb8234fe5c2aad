#include "ApplicationStyle.h"

#include <QIcon>

namespace kestrel {

QIcon ApplicationStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const {
    return icon == SP_ToolBarHorizontalExtensionButton
               ? QIcon()
               : QProxyStyle::standardIcon(icon, option, widget);
}

} // namespace kestrel
