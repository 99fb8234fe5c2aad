#pragma once

#include <QProxyStyle>

namespace kestrel {

/// Paints sliders, pop-up lists, scroll bars and progress bars in the window's own look. The rest
/// is left to the desktop's style.
class ControlStyle : public QProxyStyle {
    Q_OBJECT

  public:
    /// The one style for all controls; belongs to the application.
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
