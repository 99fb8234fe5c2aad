#pragma once

#include "ControlStyle.h"

#include <QPalette>
#include <QStyleOption>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel {

/// Makes the options that widgets pass to the style: enabled, in a light palette, from left to
/// right.
class StyleOptionsFixture : public ::testing::Test {
  protected:
    explicit StyleOptionsFixture(QPalette palette) : palette_(std::move(palette)) {}

    template <typename Option> Option option(QSize size) const {
        Option option;
        option.rect = QRect(QPoint(), size);
        option.palette = palette_;
        option.state = QStyle::State_Enabled;
        option.direction = Qt::LeftToRight;
        return option;
    }

    QStyleOptionSlider slider() const {
        auto slider = option<QStyleOptionSlider>({60, 24});
        slider.orientation = Qt::Horizontal;
        slider.minimum = 0;
        slider.maximum = 100;
        slider.sliderPosition = 50;
        return slider;
    }

    QStyleOptionSlider scrollBar() const {
        auto bar = option<QStyleOptionSlider>({12, 100});
        bar.orientation = Qt::Vertical;
        bar.minimum = 0;
        bar.maximum = 100;
        bar.pageStep = 100;
        bar.sliderPosition = 50;
        return bar;
    }

    QStyleOptionComboBox comboBox() const { return option<QStyleOptionComboBox>({60, 28}); }

    QStyleOptionProgressBar progressBar(int percent) const {
        auto bar = option<QStyleOptionProgressBar>({40, 6});
        bar.minimum = 0;
        bar.maximum = 100;
        bar.progress = percent;
        return bar;
    }

    const QPalette palette_;
    const ControlStyle& style_ = *ControlStyle::shared();
};

} // namespace kestrel
