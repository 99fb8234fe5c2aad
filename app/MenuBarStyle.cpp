#include "MenuBarStyle.h"

#include <QStyleOption>

namespace kestrel {
namespace {

constexpr int itemPadding = 10;

} // namespace

QSize MenuBarStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
    switch (type) {
    case CT_MenuBarItem: {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const int text =
            item != nullptr
                ? item->fontMetrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, item->text)
                      .width()
                : size.width();
        return {text + 2 * itemPadding, itemHeight_};
    }
    case CT_MenuBar:
        return size;
    default:
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
}

int MenuBarStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (metric) {
    case PM_MenuBarPanelWidth:
    case PM_MenuBarHMargin:
    case PM_MenuBarVMargin:
    case PM_MenuBarItemSpacing:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

} // namespace kestrel
