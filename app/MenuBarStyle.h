#pragma once

#include <QProxyStyle>

namespace kestrel {

/// The desktop's style with the menu bar's own metrics: items as high as the bar, side by side,
/// padded for their highlights.
class MenuBarStyle : public QProxyStyle {
    Q_OBJECT

  public:
    /// In pixels.
    explicit MenuBarStyle(int itemHeight) : itemHeight_(itemHeight) {}

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;

  private:
    int itemHeight_;
};

} // namespace kestrel
