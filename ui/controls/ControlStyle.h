#pragma once

#include <QProxyStyle>

namespace kestrel {

/// Proxy style that paints sliders, combo boxes, scroll bars and progress bars. Everything else is
/// delegated to the desktop's style.
class ControlStyle : public QProxyStyle {
    Q_OBJECT

  public:
    /// The shared instance; owned by the application.
    static ControlStyle* shared();

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                         SubControl subControl, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;

  private:
    ControlStyle();
};

} // namespace kestrel
